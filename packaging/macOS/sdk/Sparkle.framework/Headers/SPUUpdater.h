#pragma once

#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@interface SPUUpdater : NSObject
@property (nonatomic, readonly) BOOL canCheckForUpdates;
@property (nonatomic) BOOL automaticallyDownloadsUpdates;
@end

NS_ASSUME_NONNULL_END
