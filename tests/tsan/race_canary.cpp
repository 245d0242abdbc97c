// A deliberate data race, built only in the ThreadSanitizer build: the test passes when the
// sanitizer reports it. It guards the other suites' silence, which would mean nothing if the
// build lost its instrumentation or the options stopped the detector.

#include <cstdio>
#include <thread>

namespace {
int g_i32Shared = 0;  // written by two threads with no lock: the race the sanitizer must find
}

int main() {
    std::thread a([] { g_i32Shared += 1; });
    std::thread b([] { g_i32Shared += 2; });
    a.join();
    b.join();
    std::printf("shared=%d\n", g_i32Shared);
    return 0;
}
