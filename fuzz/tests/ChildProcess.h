#pragma once

#include <string>

namespace fuzz {

struct ChildResult {
    unsigned long exitCode;
    std::string output;
};

// The argument for a child whose heap puts the last byte of a block right before its page.
constexpr char kExact[] = "exact";

// Runs one test of this program, also a disabled one, in a process of its own.
ChildResult RunTestInChild(const std::string& test, const std::string& argument = {});

// The argument that RunTestInChild gave on.
std::string ChildArgument();

} // namespace fuzz
