// What this kit's headers for Linux and Darwin's own must agree on, so that what a test on Linux
// finds holds on a Mac. Compiled for both; there is nothing to link.

#include <Carbon/Carbon.h>
#include <mach/mach.h>

#include <cstddef>
#include <type_traits>

#define SAME(...) static_assert(std::is_same_v<__VA_ARGS__>)
#define FIELD(type, field, offset, size)                                                           \
    static_assert(offsetof(type, field) == (offset) && sizeof(type::field) == (size))

SAME(natural_t, unsigned);
SAME(integer_t, int);
SAME(kern_return_t, int);
SAME(mach_port_t, unsigned);
SAME(mach_port_name_t, unsigned);
SAME(mach_msg_type_number_t, unsigned);
SAME(host_t, mach_port_t);
SAME(task_t, mach_port_t);
SAME(task_port_t, mach_port_t);
SAME(vm_map_t, mach_port_t);
SAME(ipc_space_t, mach_port_t);
SAME(vm_address_t, unsigned long);
SAME(vm_size_t, unsigned long);
SAME(processor_flavor_t, int);
SAME(host_flavor_t, int);
SAME(processor_info_array_t, int *);
SAME(host_info64_t, int *);
static_assert(KERN_SUCCESS == 0 && KERN_INVALID_ARGUMENT == 4 && KERN_FAILURE == 5);

static_assert(PROCESSOR_CPU_LOAD_INFO == 2 && CPU_STATE_MAX == 4);
static_assert(CPU_STATE_USER == 0 && CPU_STATE_SYSTEM == 1);
static_assert(CPU_STATE_IDLE == 2 && CPU_STATE_NICE == 3);

static_assert(HOST_VM_INFO64 == 4);
static_assert(sizeof(vm_statistics64) >= 152 && alignof(vm_statistics64) == 8);
FIELD(vm_statistics64, free_count, 0, 4);
FIELD(vm_statistics64, active_count, 4, 4);
FIELD(vm_statistics64, inactive_count, 8, 4);
FIELD(vm_statistics64, wire_count, 12, 4);
FIELD(vm_statistics64, compressor_page_count, 128, 4);
FIELD(vm_statistics64, total_uncompressed_pages_in_compressor, 144, 8);

SAME(decltype(mach_task_self_), mach_port_t);
SAME(decltype(vm_page_size), vm_size_t);
SAME(decltype(mach_host_self), mach_port_t());
SAME(decltype(mach_port_deallocate), kern_return_t(ipc_space_t, mach_port_name_t));
SAME(decltype(vm_deallocate), kern_return_t(vm_map_t, vm_address_t, vm_size_t));
SAME(decltype(host_processor_info),
     kern_return_t(host_t, processor_flavor_t, natural_t *, processor_info_array_t *,
                   mach_msg_type_number_t *));
SAME(decltype(host_statistics64),
     kern_return_t(host_t, host_flavor_t, host_info64_t, mach_msg_type_number_t *));

SAME(UInt32, unsigned);
SAME(OSType, unsigned);
SAME(OSStatus, int);
SAME(ItemCount, unsigned long);
SAME(OptionBits, unsigned);
static_assert(noErr == 0);

// Darwin's headers have none of these: both compilers lay out the stand-in kit's alike.
static_assert(sizeof(EventTypeSpec) == 8 && sizeof(EventHotKeyID) == 8);
FIELD(EventTypeSpec, eventKind, 4, 4);
FIELD(EventHotKeyID, id, 4, 4);
static_assert(kEventClassKeyboard == 0x6B657962 && kEventHotKeyPressed == 5);
static_assert(eventNotHandledErr == -9874);
