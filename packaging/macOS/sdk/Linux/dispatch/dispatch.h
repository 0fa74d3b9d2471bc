#pragma once

typedef void (^dispatch_block_t)(void);
typedef struct dispatch_queue_s *dispatch_queue_t;

extern "C" {
dispatch_queue_t dispatch_get_main_queue(void);
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
}
