#pragma once

#include <QString>

/// Moves a file to the user's Trash. Where that is impossible the file stays. Any thread; may
/// block.
void moveFileToTrash(const QString &path);
