#pragma once

#include <string>

namespace fuzz {

struct ChildResult {
    unsigned long exitCode;
    std::string output;
};

// Runs one test of this program, also a disabled one, in a process of its own.
ChildResult RunTestInChild(const std::string& test, const std::string& argument = {});

// The argument that RunTestInChild gave on.
std::string ChildArgument();

} // namespace fuzz
