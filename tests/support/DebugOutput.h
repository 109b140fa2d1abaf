#pragma once

#include "support/ImportHook.h"

#include <string>
#include <vector>

namespace test {

// Records, exactly, what one module sends to the debugger while the object lives. One at a time.
class DebugOutput {
public:
    explicit DebugOutput(const wchar_t* module);
    ~DebugOutput();

    const std::vector<std::wstring>& Lines() const { return m_lines; }
    void Clear() { m_lines.clear(); }

    // All lines in one text.
    std::wstring Text() const;

private:
    static void WINAPI Record(LPCWSTR text);

    std::vector<std::wstring> m_lines;
    ImportHook m_hook;
};

} // namespace test
