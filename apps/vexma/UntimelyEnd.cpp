#include "apps/vexma/UntimelyEnd.h"

#include "apps/vexma/DescriptorText.h"
#include "apps/vexma/OwnStack.h"
#include "host/service/PluginCall.h"

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>

#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vex {

namespace {

std::atomic<Console*> watched{nullptr};
std::atomic<pid_t> watchedProcess{0}; // a copy of it that a plug-in makes is its own affair

[[noreturn]] void leave(int status) {
    for (;;) {
        ::syscall(SYS_exit_group, status);
    }
}

/// Begins a message with who did it; who calls it goes on and ends the line.
DescriptorText& blame(DescriptorText& text) {
    text.put("vexma: ");
    if (PluginCall const* const call = PluginCall::current()) {
        return text.put("the plug-in ").show(call->file()).put(": ").put(call->operation());
    }
    return text.put("something in the program");
}

/// The console of the results, once; null when nothing is under way in this process.
Console* takeWatched() {
    return ::getpid() == watchedProcess.load() ? watched.exchange(nullptr) : nullptr;
}

// Takes no memory: also called where there is none, and in handlers of signals.
void endHere(char const* how) {
    Console* const console = takeWatched();
    if (console == nullptr) {
        return;
    }
    console->takeBack();
    DescriptorText text(STDERR_FILENO);
    blame(text)
        .put(" ended the program (")
        .put(how)
        .put("), which no plug-in may; the results are not whole\n")
        .flush();
    leave(Refused);
}

extern "C" void noteExit() {
    endHere("exit");
}

extern "C" void noteQuickExit() {
    endHere("quick_exit");
}

extern "C" void noteAbort(int signal) {
    endHere("abort");
    std::signal(signal, SIG_DFL); // of a copy of the process
    std::raise(signal);
}

extern "C" void noteCrash(int signal, siginfo_t* info, void* /*context*/) {
    if (Console* const console = takeWatched()) {
        console->takeBack();
        DescriptorText text(STDERR_FILENO);
        blame(text);
        if (OwnStack::isPastEnd(info->si_addr)) {
            text.put(" used up the stack; allow a larger one (ulimit -s), or ask for less\n")
                .flush();
            leave(Refused);
        }
        text.put(" crashed (signal ").put(static_cast<unsigned>(signal)).put(")\n").flush();
    }
    std::signal(signal, SIG_DFL); // it ends the program as ever, once this handler is left
    std::raise(signal);
}

/// Has a signal handled, unless a tool of the build handles it, such as a sanitizer.
void handle(int signal, struct sigaction const& action) {
    struct sigaction earlier {};
    if (::sigaction(signal, nullptr, &earlier) == 0 && earlier.sa_handler == SIG_DFL) {
        ::sigaction(signal, &action, nullptr);
    }
}

void handleSignals() {
    alignas(16) static std::array<char, 65'536> stack; // the usual one may be used up
    stack_t own{};
    own.ss_sp = stack.data();
    own.ss_size = stack.size();
    stack_t earlier{};
    if (::sigaltstack(nullptr, &earlier) == 0 && (earlier.ss_flags & SS_DISABLE) != 0) {
        ::sigaltstack(&own, nullptr);
    }
    struct sigaction action {};
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_ONSTACK;
    action.sa_handler = &noteAbort;
    handle(SIGABRT, action);
    action.sa_flags = SA_ONSTACK | SA_SIGINFO;
    action.sa_sigaction = &noteCrash;
    for (int const signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL}) {
        handle(signal, action);
    }
}

} // namespace

UntimelyEnd::UntimelyEnd(Console& console) {
    static bool const isRegistered = [] {
        return std::atexit(&noteExit) == 0 && std::at_quick_exit(&noteQuickExit) == 0;
    }();
    static_cast<void>(isRegistered); // without them, the other ways are still noticed
    handleSignals();
    watchedProcess.store(::getpid());
    watched.store(&console);
}

UntimelyEnd::~UntimelyEnd() {
    watched.store(nullptr);
}

} // namespace vex

// In the place of the system's own, for whatever is loaded: those run nothing that was to
// run at the end.
extern "C" {

__attribute__((visibility("default"))) void _exit(int status) {
    vex::endHere("_exit");
    vex::leave(status);
}

__attribute__((visibility("default"))) void _Exit(int status) noexcept {
    vex::endHere("_Exit");
    vex::leave(status);
}
}
