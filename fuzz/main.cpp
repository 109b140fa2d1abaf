#include "fuzz/engine/CrashReport.h"
#include "fuzz/engine/Files.h"
#include "fuzz/engine/GuardedHeap.h"
#include "fuzz/engine/Session.h"
#include "support/TempFolder.h"

#include <UIlib.h>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace fuzz;

struct Arguments {
    const Target* target = nullptr;
    SessionOptions options;
    std::wstring input; // a file to run once instead
    GuardedHeap::Placement placement = GuardedHeap::Placement::Aligned;
};

std::optional<Arguments> Read(int count, char** words)
{
    Arguments arguments;
    arguments.options.progress = true;
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        const bool hasValue = i + 1 < count;
        if (word == "--exact") {
            arguments.placement = GuardedHeap::Placement::Exact;
        } else if (word == "--runs" && hasValue) {
            arguments.options.executions = std::strtoull(words[++i], nullptr, 10);
        } else if (word == "--seed" && hasValue) {
            arguments.options.seed = std::strtoull(words[++i], nullptr, 10);
        } else if ((word == "--save" || word == "--input") && hasValue) {
            const std::string path = words[++i];
            std::wstring& into = word == "--save" ? arguments.options.saveFolder : arguments.input;
            into.assign(path.begin(), path.end());
        } else if (!arguments.target) {
            arguments.target = FindTarget(word);
            if (!arguments.target)
                return std::nullopt;
        } else {
            return std::nullopt;
        }
    }
    if (!arguments.options.saveFolder.empty())
        arguments.options.saveFolder += L'\\';
    return arguments.target ? std::optional(arguments) : std::nullopt;
}

int PrintUsage()
{
    std::fputs("quillet-fuzz TARGET [--runs N] [--seed S] [--save FOLDER] [--exact]\n"
               "quillet-fuzz TARGET --input FILE [--exact]\n"
               "targets:",
               stderr);
    for (const auto& target : Targets())
        std::fprintf(stderr, " %.*s", static_cast<int>(target.name.size()), target.name.data());
    std::fputc('\n', stderr);
    return 2;
}

double UnguardedPercent()
{
    const auto heap = GuardedHeap::Count();
    return 100.0 * static_cast<double>(heap.unguarded) / static_cast<double>(heap.allocations);
}

int RunInput(const Arguments& arguments)
{
    const auto result = Replay(*arguments.target, ReadFile(arguments.input), arguments.options);
    std::printf("%.3f s; %s\n", result.slowest,
                result.failure.empty() ? "the input does no harm" : result.failure.c_str());
    std::fflush(stdout);
    return result.failure.empty() ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    const auto arguments = Read(count, words);
    if (!arguments)
        return PrintUsage();
    GuardedHeap::Install(arguments->placement);
    InstallCrashReport();
    DuiLib::CPaintManagerUI::SetInstance(::GetModuleHandleW(nullptr));
    if (!arguments->input.empty())
        return RunInput(*arguments);

    const auto result = RunSession(*arguments->target, arguments->options);
    std::printf("%s: %llu executions, %.0f s, %.3f s the slowest, %llu inputs in the pool, "
                "%.2f %% of the allocations unguarded; %s\n",
                words[1], static_cast<unsigned long long>(result.executions), result.seconds,
                result.slowest, static_cast<unsigned long long>(result.pool), UnguardedPercent(),
                result.failure.empty() ? "no findings" : result.failure.c_str());
    std::fflush(stdout);
    return result.failure.empty() ? 0 : 1;
}
