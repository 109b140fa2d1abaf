#include "fuzz/engine/CrashReport.h"

#include "fuzz/engine/GuardedHeap.h"
#include "fuzz/engine/Record.h"
#include "support/CrashFilter.h"
#include "win32/Handles.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <exception>
#include <iterator>
#include <string_view>
#include <thread>

namespace fuzz {

namespace {

bool IsFault(DWORD code)
{
    constexpr DWORD kFaults[] = {EXCEPTION_ACCESS_VIOLATION,
                                 EXCEPTION_IN_PAGE_ERROR,
                                 EXCEPTION_ILLEGAL_INSTRUCTION,
                                 EXCEPTION_PRIV_INSTRUCTION,
                                 EXCEPTION_INT_DIVIDE_BY_ZERO,
                                 EXCEPTION_INT_OVERFLOW,
                                 EXCEPTION_DATATYPE_MISALIGNMENT,
                                 STATUS_HEAP_CORRUPTION,
                                 GuardedHeap::kDamage};
    return std::find(std::begin(kFaults), std::end(kFaults), code) != std::end(kFaults);
}

// The system probes memory and handles the faults of that itself; a fault counts at once when our
// code does it, or when it happens in our memory.
bool IsOurs(const EXCEPTION_RECORD& fault)
{
    if (fault.ExceptionCode == GuardedHeap::kDamage)
        return true;
    GuardedHeap::Block block{};
    if (fault.ExceptionCode == EXCEPTION_ACCESS_VIOLATION && fault.NumberParameters >= 2 &&
        GuardedHeap::FindBlock(fault.ExceptionInformation[1], block))
        return true;
    HMODULE module = nullptr;
    if (!::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              static_cast<LPCWSTR>(fault.ExceptionAddress), &module))
        return true;
    if (module == ::GetModuleHandleW(nullptr))
        return true;
    for (const wchar_t* const ours : {L"DuiLib.dll", L"Quillet.dll", L"libstdc++-6.dll"}) {
        if (module == ::GetModuleHandleW(ours))
            return true;
    }
    return false;
}

void Describe(const EXCEPTION_RECORD& fault)
{
    std::fprintf(stderr, "CRASH %08lx\n", static_cast<unsigned long>(fault.ExceptionCode));
    if (fault.ExceptionCode != EXCEPTION_ACCESS_VIOLATION || fault.NumberParameters < 2)
        return;
    const ULONG_PTR address = fault.ExceptionInformation[1];
    std::fprintf(stderr, "%s %p", fault.ExceptionInformation[0] == 0 ? "reading" : "writing",
                 reinterpret_cast<void*>(address));
    GuardedHeap::Block block{};
    if (GuardedHeap::FindBlock(address, block))
        std::fprintf(stderr, ", %lld bytes into a%s block of %llu",
                     static_cast<long long>(address) - static_cast<long long>(block.start),
                     block.freed ? " freed" : "", static_cast<unsigned long long>(block.size));
    std::fputc('\n', stderr);
}

[[noreturn]] void End()
{
    std::fflush(nullptr);
    ::TerminateProcess(::GetCurrentProcess(), kCrashExitCode);
    for (;;)
        ::Sleep(INFINITE);
}

[[noreturn]] void ReportFault(const EXCEPTION_POINTERS& exception)
{
    Record::Instance().Report("crash");
    Describe(*exception.ExceptionRecord);
    test::PrintStack(*exception.ContextRecord);
    End();
}

// A thread that reports an overflow of another one's stack, on which there is no room for it.
class OverflowReporter {
public:
    static OverflowReporter& Instance()
    {
        static auto* const reporter = new OverflowReporter;
        return *reporter;
    }

    [[noreturn]] void Report(const EXCEPTION_POINTERS* exception)
    {
        m_exception = exception;
        ::SetEvent(m_wanted.get());
        for (;;)
            ::Sleep(INFINITE);
    }

private:
    OverflowReporter() : m_wanted(::CreateEventW(nullptr, TRUE, FALSE, nullptr))
    {
        std::thread([this] {
            ::WaitForSingleObject(m_wanted.get(), INFINITE);
            ReportFault(*m_exception);
        }).detach();
    }

    Quillet::UniqueKernelHandle m_wanted;
    const EXCEPTION_POINTERS* m_exception = nullptr;
};

LONG CALLBACK OnException(EXCEPTION_POINTERS* exception)
{
    if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_STACK_OVERFLOW)
        OverflowReporter::Instance().Report(exception);
    const auto& record = *exception->ExceptionRecord;
    if (IsFault(record.ExceptionCode) && IsOurs(record))
        ReportFault(*exception);
    return EXCEPTION_CONTINUE_SEARCH;
}

LONG WINAPI OnUnhandled(EXCEPTION_POINTERS* exception)
{
    ReportFault(*exception);
}

void ReportHere(const char* what)
{
    Record::Instance().Report(what);
    CONTEXT context{};
    ::RtlCaptureContext(&context);
    test::PrintStack(context);
    End();
}

void OnAbort(int)
{
    ReportHere("abort");
}

void OnTerminate()
{
    ReportHere("uncaught exception");
}

} // namespace

void InstallCrashReport()
{
    OverflowReporter::Instance();
    ::AddVectoredExceptionHandler(1, &OnException);
    ::SetUnhandledExceptionFilter(&OnUnhandled);
    std::signal(SIGABRT, &OnAbort);
    std::set_terminate(&OnTerminate);
}

} // namespace fuzz
