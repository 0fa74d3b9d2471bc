#pragma once

#include <optional>

/// Answers "--help" and "--version" on standard output, and what the program does not know on
/// standard error. The exit status; absent when the program is to run. Needs no application object,
/// and touches nothing else.
std::optional<int> answerCommandLine(int argc, char **argv);
