#pragma once

#include <optional>

/// Prints what "--help" and "--version" ask for, or an error for an unknown argument. Returns the
/// exit status; absent when the program is to run. Needs no application object.
std::optional<int> answerCommandLine(int argc, char **argv);
