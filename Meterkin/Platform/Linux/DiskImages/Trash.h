#pragma once

class HeldFile;

/// Moves a file to the user's Trash: the one of the file's own file system, as the desktops agreed
/// on it. The file stays where it is when that fails or when it lies in there already, and so does
/// another one that has taken its name. Any thread.
///
/// Not Qt's way, which tries names for ever where it may not write, and has its say on the
/// error output.
bool moveToTrash(const HeldFile &file);
