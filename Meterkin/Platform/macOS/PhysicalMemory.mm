#include "Platform/macOS/PhysicalMemory.h"

#import <Foundation/Foundation.h>

std::uint64_t physicalMemory()
{
    return NSProcessInfo.processInfo.physicalMemory;
}
