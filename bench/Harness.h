#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace bench {

// Median time of one call, in nanoseconds: the function is repeated until a sample is long enough
// to measure, and several samples are taken.
double TimeOf(const std::function<void()>& function);

// Two functions measured in turn, sample by sample, so that a noisy machine disturbs both alike.
struct Pair {
    double cost;
    double bare;
};
Pair TimeBoth(const std::function<void()>& function, const std::function<void()>& bare);

// The same for functions that other programs disturb by more than what is to be seen: the least of
// many samples.
Pair LeastOfBoth(const std::function<void()>& function, const std::function<void()>& bare);

// A line of the report.
struct Result {
    std::string name;
    double value;                // nanoseconds, or the unit named
    std::optional<double> bare;  // what it is compared with, in the same unit
    std::optional<double> bound; // the largest allowed value / bare, or value without a bare
    std::string unit = "ns";

    double Ratio() const { return bare ? value / *bare : value; }
    bool Holds() const { return !bound || Ratio() <= *bound; }
};

class Report {
public:
    void Add(Result result);

    bool AllHold() const;
    void Print() const;
    bool WriteJson(const std::wstring& path) const;

private:
    std::vector<Result> m_results;
};

// One function per source.
void RunAnimationBench(Report& report);
void RunConfirmationBench(Report& report);
void RunControllerBench(Report& report);
void RunDialogBench(Report& report);
void RunFindBench(Report& report);
void RunListBench(Report& report);
void RunMemoryBench(Report& report);
void RunMenuBench(Report& report);
void RunMessageBoxBench(Report& report);
void RunPaintBench(Report& report);
void RunPainterBench(Report& report);
void RunQueueBench(Report& report);
void RunResizeBench(Report& report);
void RunRouteBench(Report& report);
void RunSkinBench(Report& report);
void RunThumbnailBench(Report& report);
void RunToggleSwitchBench(Report& report);
void RunTreeBench(Report& report);

} // namespace bench
