#include <dispatch/dispatch.h>

#include <Block.h>

#include <QCoreApplication>

#include <cstdlib>

struct dispatch_queue_s {
} mainQueue;

dispatch_queue_t dispatch_get_main_queue()
{
    return &mainQueue;
}

void dispatch_async(dispatch_queue_t queue, dispatch_block_t block)
{
    if (queue != &mainQueue)
        std::abort();
    const auto copy = Block_copy(block);
    QMetaObject::invokeMethod(
        qApp,
        [copy] {
            copy();
            Block_release(copy);
        },
        Qt::QueuedConnection);
}
