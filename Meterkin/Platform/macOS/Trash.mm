#include "Platform/macOS/Trash.h"

#include "Platform/macOS/FoundationValues.h"

void moveFileToTrash(const QString &path)
{
    @autoreleasepool {
        [NSFileManager.defaultManager trashItemAtURL:[NSURL fileURLWithPath:foundationText(path)]
                                    resultingItemURL:nullptr
                                               error:nullptr];
    }
}
