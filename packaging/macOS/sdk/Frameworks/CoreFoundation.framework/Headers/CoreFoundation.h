#pragma once

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef const struct __attribute__((objc_bridge(NSDictionary))) __CFDictionary *CFDictionaryRef;
typedef struct __attribute__((objc_bridge_mutable(NSMutableDictionary)))
__CFDictionary *CFMutableDictionaryRef;

#ifdef __cplusplus
}
#endif
