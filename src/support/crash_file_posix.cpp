// The crash file of a POSIX system. What runs after a crash calls nothing but what POSIX lists as
// safe in a signal handler, and backtrace(), which is safe once its library is loaded. So there is
// no allocation and no printf: all paths are made ready beforehand.
#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <span>
#include <string_view>

#include <execinfo.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <ucontext.h>
#include <unistd.h>

#include "support/crash_file.h"
#include "support/paths.h"
#include "support/version.h"

namespace bw {
namespace {

struct CrashSignal {
    int number;
    std::string_view name;
};
constexpr CrashSignal kCrashSignals[] = {{SIGSEGV, "SIGSEGV"},
                                         {SIGBUS, "SIGBUS"},
                                         {SIGFPE, "SIGFPE"},
                                         {SIGILL, "SIGILL"},
                                         {SIGABRT, "SIGABRT"}};
constexpr size_t kStackBytes =
    size_t{128} * 1024;  // backtrace() takes some 10 KB, more under sanitizers
constexpr int kMaxCalls = 128;
constexpr unsigned kMaxSeconds = 10;  // a handler that hangs in a broken heap is ended then

// Text in a fixed room; what doesn't fit is left out. Always ends with a zero.
template <size_t kRoom>
class FixedText {
  public:
    FixedText& Add(std::string_view text) {
        const size_t taken = std::min(text.size(), kRoom - 1 - size_);
        std::copy_n(text.begin(), taken, bytes_.begin() + size_);
        size_ += taken;
        bytes_[size_] = '\0';
        return *this;
    }
    FixedText& AddNumber(uint64_t number, unsigned base = 10, size_t digits = 1) {
        std::array<char, 20> reversed{};
        size_t count = 0;
        for (; number != 0 || count < digits; number /= base) {
            reversed[count++] = "0123456789abcdef"[number % base];
        }
        while (count != 0)
            Add({&reversed[--count], 1});
        return *this;
    }
    void Clear() {
        size_ = 0;
        bytes_[0] = '\0';
    }
    std::string_view View() const { return {bytes_.data(), size_}; }
    const char* Zeroed() const { return bytes_.data(); }

  private:
    std::array<char, kRoom> bytes_{};
    size_t size_ = 0;
};

using Path = FixedText<PATH_MAX>;

struct Handler {
    Path programFolder;  // .../Dump
    Path userFolder;
    FixedText<NAME_MAX> program;  // the executable's name without extension
    FixedText<64> version;
    FixedText<512> exception;       // the words of the one that nobody caught
    std::atomic<pid_t> crashed{0};  // the thread that writes the file
    alignas(16) std::array<char, kStackBytes> stack{};
};

// The one global of the program: a signal handler gets nothing else handed in.
Handler handler;  // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)

void Write(int file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t done = write(file, text.data(), text.size());
        if (done <= 0 && errno != EINTR) return;
        text.remove_prefix(done > 0 ? static_cast<size_t>(done) : 0);
    }
}

// Each level of the folder in turn; a level that is there is no failure.
void MakeFoldersInHandler(const Path& folder) {
    const std::string_view whole = folder.View();
    for (size_t end = 1; end <= whole.size(); ++end) {
        if (end != whole.size() && whole[end] != '/') continue;
        Path level;
        level.Add(whole.substr(0, end));
        mkdir(level.Zeroed(), 0777);
    }
}

// "2026-11-21 19_08_37.5", and the same with other signs for reading.
template <size_t kRoom>
void AddTime(FixedText<kRoom>& text, std::chrono::system_clock::time_point time,
             std::string_view between) {
    using namespace std::chrono;
    const auto day = floor<days>(time);
    const year_month_day date{day};
    const hh_mm_ss clock{floor<milliseconds>(time - day)};
    text.AddNumber(static_cast<uint64_t>(static_cast<int>(date.year())), 10, 4).Add("-");
    text.AddNumber(static_cast<unsigned>(date.month()), 10, 2).Add("-");
    text.AddNumber(static_cast<unsigned>(date.day()), 10, 2).Add(" ");
    text.AddNumber(static_cast<uint64_t>(clock.hours().count()), 10, 2).Add(between);
    text.AddNumber(static_cast<uint64_t>(clock.minutes().count()), 10, 2).Add(between);
    text.AddNumber(static_cast<uint64_t>(clock.seconds().count()), 10, 2).Add(".");
    text.AddNumber(static_cast<uint64_t>(clock.subseconds().count()));
}

int CreateFile(const Path& folder, std::chrono::system_clock::time_point time) {
    MakeFoldersInHandler(folder);
    Path path = folder;
    path.Add("/").Add(handler.program.View()).Add("_");
    AddTime(path, time, "_");
    path.Add(".dmp");
    return open(path.Zeroed(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

// Names in the order of gregs on x86-64.
constexpr std::array<std::string_view, 23> kRegisters{
    "r8",  "r9",  "r10", "r11", "r12", "r13", "r14",    "r15",   "rdi",  "rsi",     "rbp", "rbx",
    "rdx", "rax", "rcx", "rsp", "rip", "efl", "csgsfs", "error", "trap", "oldmask", "cr2"};

// A template, so that machines whose context has no such field simply have no registers told.
template <typename Context>
void WriteRegisters(int file, const Context& machine) {
    if constexpr (requires { machine.gregs; }) {
        FixedText<2048> text;
        text.Add("\nRegisters:\n");
        const size_t count = std::size(machine.gregs);
        for (size_t i = 0; i < count; ++i) {
            text.Add("  ");
            if (count == kRegisters.size()) {
                text.Add(kRegisters[i]);
            } else {
                text.AddNumber(i);
            }
            text.Add(" 0x").AddNumber(static_cast<uint64_t>(machine.gregs[i]), 16, 16).Add("\n");
        }
        Write(file, text.View());
    }
}

void WriteMemoryMap(int file) {
    Write(file, "\nMemory map:\n");
    const int map = open("/proc/self/maps", O_RDONLY | O_CLOEXEC);
    if (map == -1) return;
    std::array<char, 4096> block{};
    for (ssize_t size = 0; (size = read(map, block.data(), block.size())) > 0;) {
        Write(file, {block.data(), static_cast<size_t>(size)});
    }
    close(map);
}

void WriteReport(int file, int signal, const siginfo_t& what, const ucontext_t& where,
                 std::chrono::system_clock::time_point time) {
    FixedText<2048> head;
    head.Add(handler.program.View()).Add(" ").Add(handler.version.View()).Add("\nUTC time: ");
    AddTime(head, time, ":");
    head.Add("\nSignal: ").AddNumber(static_cast<uint64_t>(signal));
    for (const CrashSignal& known : kCrashSignals) {
        if (known.number == signal) head.Add(" ").Add(known.name);
    }
    head.Add(", code ");
    if (what.si_code < 0) head.Add("-");
    head.AddNumber(static_cast<uint64_t>(std::abs(what.si_code)));
    if (signal != SIGABRT) {
        head.Add(", address 0x").AddNumber(reinterpret_cast<uintptr_t>(what.si_addr), 16);
    }
    head.Add("\nThread: ").AddNumber(static_cast<uint64_t>(gettid()));
    if (!handler.exception.View().empty()) head.Add("\nException: ").Add(handler.exception.View());
    head.Add("\n");
    Write(file, head.View());
    WriteRegisters(file, where.uc_mcontext);
    WriteMemoryMap(file);
    // Last, since a broken stack can bring this down.
    Write(file, "\nCalls:\n");
    std::array<void*, kMaxCalls> calls{};
    backtrace_symbols_fd(calls.data(), backtrace(calls.data(), kMaxCalls), file);
}

extern "C" void BankweaverOnCrash(int signal, siginfo_t* what, void* where) {
    const pid_t self = gettid();
    pid_t first = 0;
    if (!handler.crashed.compare_exchange_strong(first, self)) {
        if (first == self) _exit(128 + signal);  // the handler itself has crashed
        for (;;)
            pause();  // the first one's file counts; it ends the process
    }
    std::signal(SIGALRM, SIG_DFL);
    sigset_t alarmSignal;
    sigemptyset(&alarmSignal);
    sigaddset(&alarmSignal, SIGALRM);
    pthread_sigmask(SIG_UNBLOCK, &alarmSignal, nullptr);
    alarm(kMaxSeconds);

    const auto now = std::chrono::system_clock::now();
    int file = CreateFile(handler.programFolder, now);
    if (file == -1) file = CreateFile(handler.userFolder, now);
    if (file != -1) {
        WriteReport(file, signal, *what, *static_cast<const ucontext_t*>(where), now);
        close(file);
    }
    _exit(128 + signal);
}

// Keeps the exception's words for the crash file that abort() brings about.
[[noreturn]] void OnTerminate() {
    try {
        if (const std::exception_ptr flying = std::current_exception()) {
            handler.exception.Clear();
            handler.exception.Add("of an unknown type");
            std::rethrow_exception(flying);
        }
    } catch (const std::exception& exception) {
        handler.exception.Clear();
        handler.exception.Add(exception.what());
    } catch (...) {
        // Its type is all that could be told, and there is no portable name for that.
    }
    std::abort();
}

stack_t UseStack(std::span<char> room) {
    stack_t stack{};
    stack_t old{};
    stack.ss_sp = room.data();
    stack.ss_size = room.size();
    sigaltstack(&stack, &old);
    return old;
}

}  // namespace

void InstallCrashHandler() {
    handler.programFolder.Add((ExecutableFolder() / "Dump").native());
    handler.userFolder.Add((UserConfigFolder() / "Dump").native());
    handler.program.Add(ExecutablePath().stem().native());
    handler.version.Add(ProgramVersion());
    void* call = nullptr;
    backtrace(&call, 1);  // loads its library now, which a handler must not do
    UseStack(handler.stack);
    struct sigaction action {};
    action.sa_sigaction = &BankweaverOnCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    for (const CrashSignal& signal : kCrashSignals)
        sigaction(signal.number, &action, nullptr);
    std::set_terminate(&OnTerminate);
}

struct CrashStack::State {
    std::array<char, kStackBytes> stack;
    stack_t old;  // a sanitizer's own
};

CrashStack::CrashStack() : state_(std::make_unique_for_overwrite<State>()) {
    state_->old = UseStack(state_->stack);
}

CrashStack::~CrashStack() {
    sigaltstack(&state_->old, nullptr);
}

}  // namespace bw
