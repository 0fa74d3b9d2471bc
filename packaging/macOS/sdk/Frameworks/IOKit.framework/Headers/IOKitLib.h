#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <mach/mach.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef mach_port_t io_object_t;
typedef io_object_t io_service_t;
typedef io_object_t io_connect_t;

#define IO_OBJECT_NULL ((io_object_t)0)

extern const mach_port_t kIOMainPortDefault;

CFMutableDictionaryRef IOServiceMatching(const char *name) __attribute__((cf_returns_retained));
io_service_t IOServiceGetMatchingService(mach_port_t mainPort,
                                         CFDictionaryRef matching __attribute__((cf_consumed)));
kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, uint32_t type,
                            io_connect_t *connect);
kern_return_t IOServiceClose(io_connect_t connect);
kern_return_t IOObjectRelease(io_object_t object);
kern_return_t IOConnectCallStructMethod(mach_port_t connection, uint32_t selector,
                                        const void *inputStruct, size_t inputStructCnt,
                                        void *outputStruct, size_t *outputStructCnt);

#ifdef __cplusplus
}
#endif
