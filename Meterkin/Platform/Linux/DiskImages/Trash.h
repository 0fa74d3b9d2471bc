#pragma once

class HeldFile;

/// Moves a file to the user's Trash on the file's own file system (Trash Specification,
/// specifications.freedesktop.org). The file stays when that fails or when it lies there already,
/// and so does another file that has its name now. Any thread.
///
/// Not QFile::moveToTrash(), which tries names forever where it may not write, and prints errors.
bool moveToTrash(const HeldFile &file);
