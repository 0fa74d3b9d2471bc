#pragma once

#import <Sparkle/SPUStandardUpdaterController.h>
#import <Sparkle/SPUUpdater.h>
