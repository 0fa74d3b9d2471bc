#pragma once

#include <stddef.h>
#include <stdint.h>

typedef unsigned int natural_t;
typedef int integer_t;
typedef int kern_return_t;
typedef uintptr_t vm_offset_t;
typedef uintptr_t vm_size_t;
typedef vm_offset_t vm_address_t;
typedef natural_t mach_port_name_t;
typedef natural_t mach_msg_type_number_t;

typedef unsigned int mach_port_t;
typedef mach_port_t host_t;
typedef mach_port_t task_t;
typedef task_t task_port_t;
typedef mach_port_t vm_map_t;
typedef mach_port_t ipc_space_t;

typedef int processor_flavor_t;
typedef integer_t *processor_info_array_t;
typedef integer_t host_flavor_t;
typedef integer_t *host_info64_t;

#define KERN_SUCCESS 0
#define KERN_INVALID_ARGUMENT 4
#define KERN_FAILURE 5

#define PROCESSOR_CPU_LOAD_INFO 2
#define CPU_STATE_MAX 4
#define CPU_STATE_USER 0
#define CPU_STATE_SYSTEM 1
#define CPU_STATE_IDLE 2
#define CPU_STATE_NICE 3

#define HOST_VM_INFO64 4

struct vm_statistics64 {
    natural_t free_count;
    natural_t active_count;
    natural_t inactive_count;
    natural_t wire_count;
    uint64_t zero_fill_count;
    uint64_t reactivations;
    uint64_t pageins;
    uint64_t pageouts;
    uint64_t faults;
    uint64_t cow_faults;
    uint64_t lookups;
    uint64_t hits;
    uint64_t purges;
    natural_t purgeable_count;
    natural_t speculative_count;
    uint64_t decompressions;
    uint64_t compressions;
    uint64_t swapins;
    uint64_t swapouts;
    natural_t compressor_page_count;
    natural_t throttled_count;
    natural_t external_page_count;
    natural_t internal_page_count;
    uint64_t total_uncompressed_pages_in_compressor;
} __attribute__((aligned(8)));
