#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFileManager : NSObject
@property (class, readonly, strong) NSFileManager *defaultManager;
- (BOOL)trashItemAtURL:(NSURL *)url
      resultingItemURL:(NSURL *_Nullable *_Nullable)resultingUrl
                 error:(NSError *_Nullable *_Nullable)error;
@end

NS_ASSUME_NONNULL_END
