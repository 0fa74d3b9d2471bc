#pragma once

#include <mach/mach_types.h>

#ifdef __cplusplus
extern "C" {
#endif

extern mach_port_t mach_task_self_;
#define mach_task_self() mach_task_self_
extern vm_size_t vm_page_size;

mach_port_t mach_host_self(void);
kern_return_t mach_port_deallocate(ipc_space_t task, mach_port_name_t name);
kern_return_t vm_deallocate(vm_map_t target_task, vm_address_t address, vm_size_t size);
kern_return_t host_processor_info(host_t host, processor_flavor_t flavor,
                                  natural_t *out_processor_count,
                                  processor_info_array_t *out_processor_info,
                                  mach_msg_type_number_t *out_processor_infoCnt);
kern_return_t host_statistics64(host_t host_priv, host_flavor_t flavor,
                                host_info64_t host_info64_out,
                                mach_msg_type_number_t *host_info64_outCnt);

#ifdef __cplusplus
}
#endif
