#include "apps/vexma/OwnStack.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <pthread.h>
#include <sys/resource.h>

namespace vex {

namespace {

constexpr std::size_t enough = 8U << 20U; // what systems give
constexpr std::uintptr_t slack = 256U << 10U;

std::uintptr_t end = 0; // the lowest address; 0 when it is not known

struct Work {
    int (*function)(int, char**);
    int argc;
    char** argv;
};

// The process ends on this thread: a plug-in that raised something while it was loaded has
// left the loader of libraries to it, and the end takes that.
void* workAndExit(void* given) {
    Work const& work = *static_cast<Work*>(given);
    end = reinterpret_cast<std::uintptr_t>(&given) - enough;
    std::exit(work.function(work.argc, work.argv));
}

/// Does the work on a thread with enough of a stack. Comes back when there is none to be had.
void workOnThread(Work& work) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, enough);
    pthread_t thread{};
    if (::pthread_create(&thread, &attributes, &workAndExit, &work) == 0) {
        ::pthread_join(thread, nullptr);
    }
    pthread_attr_destroy(&attributes);
}

} // namespace

int OwnStack::run(int (*function)(int, char**), int argc, char** argv) {
    Work work{function, argc, argv};
    struct rlimit limit {};
    if (::getrlimit(RLIMIT_STACK, &limit) == 0 && limit.rlim_cur != RLIM_INFINITY) {
        if (limit.rlim_cur < enough) {
            workOnThread(work);
        }
        end = reinterpret_cast<std::uintptr_t>(&work) - static_cast<std::uintptr_t>(limit.rlim_cur);
    }
    return function(argc, argv);
}

bool OwnStack::isPastEnd(void const* address) {
    auto const place = reinterpret_cast<std::uintptr_t>(address);
    return end != 0 && place >= end - slack && place < end + slack;
}

} // namespace vex
