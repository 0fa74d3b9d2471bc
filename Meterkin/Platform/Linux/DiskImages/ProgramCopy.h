#pragma once

#include <string>

/// Whether the folder's entry of that name holds a copy of the running program, at the same place
/// as in the bundle that it was installed as. The copy must lie on the folder's file system, be
/// reached through no link and have the same content; the running file itself is none. Reads both
/// files: for a background thread.
bool holdsProgramCopy(const std::string &folder, const std::string &name);
