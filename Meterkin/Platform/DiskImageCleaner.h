#pragma once

/// Gets rid of the disk image that the program was installed from. Main thread only.
class DiskImageCleaner {
public:
    virtual ~DiskImageCleaner() = default;

    /// Returns at once; the work is done in the background and every failure is silent.
    virtual void start() = 0;
};
