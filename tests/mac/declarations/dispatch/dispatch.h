// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <objc/NSObject.h>

#include <stdint.h>

@protocol OS_dispatch_queue <NSObject>
@end

typedef NSObject<OS_dispatch_queue> *dispatch_queue_t;
typedef void (^dispatch_block_t)(void);
typedef uint64_t dispatch_time_t;

#define DISPATCH_TIME_NOW (0ull)
#define NSEC_PER_SEC 1000000000ull
#define NSEC_PER_MSEC 1000000ull

NS_ASSUME_NONNULL_BEGIN
extern "C" {
dispatch_queue_t dispatch_get_main_queue(void);
void dispatch_async(dispatch_queue_t queue, dispatch_block_t block);
void dispatch_sync(dispatch_queue_t queue, __attribute__((noescape)) dispatch_block_t block);
dispatch_time_t dispatch_time(dispatch_time_t when, int64_t delta);
void dispatch_after(dispatch_time_t when, dispatch_queue_t queue, dispatch_block_t block);
}
NS_ASSUME_NONNULL_END
