#pragma once
// Hand-offs that ThreadSanitizer cannot see on its own. Qt is not built with the sanitizer, so a
// task handed to another thread through Qt's event queue (guarded by Qt's own futex-based locks)
// looks like a data race to it. The kit marks its hand-offs instead: the sending thread releases
// the object it hands over once it is complete, the receiving thread acquires it before use. In
// every other build the marks compile to nothing. Locks shared between threads are std::mutex
// (pthread) rather than QMutex for the same reason: the sanitizer sees pthread locks, not Qt's.

#if defined(__SANITIZE_THREAD__)
#define LX_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define LX_THREAD_SANITIZER 1
#endif
#endif

#ifdef LX_THREAD_SANITIZER
#include <sanitizer/tsan_interface.h>
#define LX_TSAN_RELEASE(object) __tsan_release(static_cast<void*>(object))
#define LX_TSAN_ACQUIRE(object) __tsan_acquire(static_cast<void*>(object))
#else
#define LX_TSAN_RELEASE(object) static_cast<void>(object)
#define LX_TSAN_ACQUIRE(object) static_cast<void>(object)
#endif
