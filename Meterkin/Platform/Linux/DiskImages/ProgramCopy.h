#pragma once

#include <string>

/// Whether a folder's entry of that name holds the very program that runs: what lies in the bundle
/// as the program's file lies in that entry too, on the same file system and reached through no
/// link, with the same content. False for the running file itself. Reads both files: for a
/// background thread.
bool holdsProgramCopy(const std::string &folder, const std::string &name);
