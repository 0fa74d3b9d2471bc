#pragma once

#import <Foundation/Foundation.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct CGColorSpace *CGColorSpaceRef;
typedef struct CGContext *CGContextRef;

typedef NS_ENUM(uint32_t, CGImageAlphaInfo) { kCGImageAlphaPremultipliedFirst = 2 };
typedef NS_OPTIONS(uint32_t, CGBitmapInfo) { kCGBitmapByteOrder32Little = 2 << 12 };

CGColorSpaceRef _Nullable CGColorSpaceCreateDeviceRGB(void);
void CGColorSpaceRelease(CGColorSpaceRef _Nullable space);
CGContextRef _Nullable CGBitmapContextCreate(void *_Nullable data, size_t width, size_t height,
                                             size_t bitsPerComponent, size_t bytesPerRow,
                                             CGColorSpaceRef _Nullable space, uint32_t bitmapInfo);
void CGContextRelease(CGContextRef _Nullable context);
void CGContextScaleCTM(CGContextRef _Nullable context, CGFloat sx, CGFloat sy);

#ifdef __cplusplus
}
#endif
