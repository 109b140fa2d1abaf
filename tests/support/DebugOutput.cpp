#include "support/DebugOutput.h"

namespace test {

namespace {

DebugOutput* g_recorder = nullptr;

} // namespace

DebugOutput::DebugOutput(const wchar_t* module)
    : m_hook(module, "KERNEL32.dll", "OutputDebugStringW", &DebugOutput::Record)
{
    g_recorder = this;
}

DebugOutput::~DebugOutput()
{
    g_recorder = nullptr;
}

std::wstring DebugOutput::Text() const
{
    std::wstring text;
    for (const auto& line : m_lines)
        text += line;
    return text;
}

void WINAPI DebugOutput::Record(LPCWSTR text)
{
    if (g_recorder)
        g_recorder->m_lines.emplace_back(text);
}

} // namespace test
