#include "fuzz/tests/ChildProcess.h"

#include "support/TempFolder.h"
#include "win32/Handles.h"

#include <array>
#include <fstream>
#include <iterator>

namespace fuzz {

namespace {

constexpr wchar_t kVariable[] = L"QUILLET_FUZZ_CHILD";

std::wstring ProgramPath()
{
    std::array<wchar_t, MAX_PATH> path{};
    ::GetModuleFileNameW(nullptr, path.data(), MAX_PATH);
    return path.data();
}

} // namespace

ChildResult RunTestInChild(const std::string& test, const std::string& argument)
{
    const test::TempFolder folder;
    const std::wstring log = folder / L"log";
    SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    Quillet::UniqueKernelHandle output(::CreateFileW(log.c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                                     &inherited, CREATE_ALWAYS, 0, nullptr));
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = start.hStdError = output.get();

    ::SetEnvironmentVariableW(kVariable, std::wstring(argument.begin(), argument.end()).c_str());
    std::wstring command = L'"' + ProgramPath() + L"\" --gtest_also_run_disabled_tests " +
                           L"--gtest_filter=" + std::wstring(test.begin(), test.end());
    PROCESS_INFORMATION process{};
    ChildResult result{};
    if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                          &start, &process))
        return result;
    const Quillet::UniqueKernelHandle handle(process.hProcess);
    const Quillet::UniqueKernelHandle thread(process.hThread);
    ::WaitForSingleObject(handle.get(), INFINITE);
    ::GetExitCodeProcess(handle.get(), &result.exitCode);
    output.reset();
    std::ifstream file(log.c_str(), std::ios::binary);
    result.output.assign(std::istreambuf_iterator<char>(file), {});
    return result;
}

std::string ChildArgument()
{
    std::array<wchar_t, MAX_PATH> value{};
    ::GetEnvironmentVariableW(kVariable, value.data(), MAX_PATH);
    return test::Utf8(value.data());
}

} // namespace fuzz
