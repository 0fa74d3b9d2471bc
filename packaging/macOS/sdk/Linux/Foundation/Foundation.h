#pragma once

#include_next <Foundation/Foundation.h>

// What the Foundation of the tests lacks.

@interface NSFileManager (Fake)
- (BOOL)trashItemAtURL:(NSURL *)url resultingItemURL:(NSURL **)resultingUrl error:(NSError **)error;
@end
