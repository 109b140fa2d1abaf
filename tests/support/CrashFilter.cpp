#include "support/CrashFilter.h"

#include "win32/Windows.h"

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace test {

namespace {

constexpr UINT kCrashExitCode = 99;
constexpr int kMostFrames = 40;

LONG WINAPI OnCrash(EXCEPTION_POINTERS* exception)
{
    std::fprintf(stderr, "CRASH %08lx\n",
                 static_cast<unsigned long>(exception->ExceptionRecord->ExceptionCode));
    PrintStack(*exception->ContextRecord);
    std::fflush(nullptr);
    ::TerminateProcess(::GetCurrentProcess(), kCrashExitCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

[[noreturn]] void OnTerminate()
{
    std::fputs("TERMINATE\n", stderr);
    CONTEXT context{};
    ::RtlCaptureContext(&context);
    PrintStack(context);
    std::fflush(nullptr);
    ::TerminateProcess(::GetCurrentProcess(), kCrashExitCode);
    std::abort();
}

} // namespace

void PrintStack(CONTEXT context)
{
    for (int i = 0; i < kMostFrames && context.Rip != 0; ++i) {
        HMODULE module = nullptr;
        wchar_t name[MAX_PATH] = L"?";
        ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                 GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                             reinterpret_cast<LPCWSTR>(context.Rip), &module);
        if (module)
            ::GetModuleFileNameW(module, name, MAX_PATH);
        std::fprintf(
            stderr, "  %ls+0x%llx\n", name,
            static_cast<unsigned long long>(context.Rip - reinterpret_cast<DWORD64>(module)));

        DWORD64 imageBase = 0;
        auto* const function = ::RtlLookupFunctionEntry(context.Rip, &imageBase, nullptr);
        if (!function) {
            context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp);
            context.Rsp += sizeof(DWORD64);
            continue;
        }
        void* handlerData = nullptr;
        DWORD64 establisherFrame = 0;
        ::RtlVirtualUnwind(UNW_FLAG_NHANDLER, imageBase, context.Rip, function, &context,
                           &handlerData, &establisherFrame, nullptr);
    }
}

void InstallCrashFilter()
{
    ::SetUnhandledExceptionFilter(OnCrash);
    std::set_terminate(OnTerminate);
}

} // namespace test
