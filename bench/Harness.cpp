#include "bench/Harness.h"

#include "win32/Windows.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

namespace bench {

namespace {

constexpr int kSamples = 15;
constexpr int kSamplesForTheLeast = 100;
constexpr double kSampleNanoseconds = 4e6;

double Now()
{
    LARGE_INTEGER ticks;
    LARGE_INTEGER frequency;
    ::QueryPerformanceCounter(&ticks);
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(ticks.QuadPart) * 1e9 / static_cast<double>(frequency.QuadPart);
}

double TimeOfCalls(const std::function<void()>& function, int calls)
{
    const double start = Now();
    for (int i = 0; i < calls; ++i)
        function();
    return (Now() - start) / calls;
}

int CallsPerSample(const std::function<void()>& function)
{
    int calls = 1;
    while (TimeOfCalls(function, calls) * calls < kSampleNanoseconds && calls < (1 << 24))
        calls *= 2;
    return calls;
}

double Median(std::vector<double> samples)
{
    std::nth_element(samples.begin(), samples.begin() + kSamples / 2, samples.end());
    return samples[kSamples / 2];
}

} // namespace

double TimeOf(const std::function<void()>& function)
{
    const int calls = CallsPerSample(function);
    std::vector<double> samples(kSamples);
    std::generate(samples.begin(), samples.end(), [&] { return TimeOfCalls(function, calls); });
    return Median(std::move(samples));
}

Pair TimeBoth(const std::function<void()>& function, const std::function<void()>& bare)
{
    const int calls = CallsPerSample(function);
    const int bareCalls = CallsPerSample(bare);
    std::vector<double> samples(kSamples);
    std::vector<double> bareSamples(kSamples);
    for (int i = 0; i < kSamples; ++i) {
        samples[static_cast<std::size_t>(i)] = TimeOfCalls(function, calls);
        bareSamples[static_cast<std::size_t>(i)] = TimeOfCalls(bare, bareCalls);
    }
    return {Median(std::move(samples)), Median(std::move(bareSamples))};
}

Pair LeastOfBoth(const std::function<void()>& function, const std::function<void()>& bare)
{
    const int calls = CallsPerSample(function);
    const int bareCalls = CallsPerSample(bare);
    Pair least{TimeOfCalls(function, calls), TimeOfCalls(bare, bareCalls)};
    for (int i = 1; i < kSamplesForTheLeast; ++i) {
        least.cost = std::min(least.cost, TimeOfCalls(function, calls));
        least.bare = std::min(least.bare, TimeOfCalls(bare, bareCalls));
    }
    return least;
}

void Report::Add(Result result)
{
    m_results.push_back(std::move(result));
}

bool Report::AllHold() const
{
    return std::all_of(m_results.begin(), m_results.end(),
                       [](const Result& result) { return result.Holds(); });
}

void Report::Print() const
{
    std::printf("%-62s %14s %14s %9s %9s\n", "", "cost", "bare", "ratio", "bound");
    for (const auto& result : m_results) {
        std::printf("%-62s %11.0f %-2s", result.name.c_str(), result.value, result.unit.c_str());
        if (result.bare)
            std::printf(" %14.0f %9.3f", *result.bare, result.Ratio());
        else
            std::printf(" %14s %9s", "", "");
        if (result.bound)
            std::printf(" %9.3f %s", *result.bound, result.Holds() ? "" : "OVER");
        std::printf("\n");
    }
    std::fflush(stdout);
}

bool Report::WriteJson(const std::wstring& path) const
{
    std::ofstream file{std::filesystem::path(path)};
    file << "[\n";
    for (std::size_t i = 0; i < m_results.size(); ++i) {
        const auto& result = m_results[i];
        file << "  {\"name\": \"" << result.name << "\", \"value\": " << result.value
             << ", \"unit\": \"" << result.unit << '"';
        if (result.bare)
            file << ", \"bare\": " << *result.bare << ", \"ratio\": " << result.Ratio();
        if (result.bound)
            file << ", \"bound\": " << *result.bound;
        file << (i + 1 < m_results.size() ? "},\n" : "}\n");
    }
    file << "]\n";
    return file.good();
}

} // namespace bench
