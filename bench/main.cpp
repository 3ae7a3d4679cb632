// Runs every row and writes the medians over the repetitions, with the ratios to the show's form.
#include "bench/median.h"
#include "bench/rows.h"

#include <array>
#include <benchmark/benchmark.h>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr const char* kOwnForm = "kso";

struct Form {
    std::string name;
};

struct Row {
    std::string name;
    std::vector<Form> forms;
};

// In the order in which they were added.
std::vector<Row>& rows()
{
    static std::vector<Row> all;
    return all;
}

// Collects the times instead of writing a line for each repetition.
class Collector : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override
    {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                seconds_[run.run_name.function_name].push_back(run.cpu_accumulated_time /
                                                               static_cast<double>(run.iterations));
            }
        }
    }

    [[nodiscard]] std::vector<double> of(const Row& row, const Form& form) const
    {
        const auto found = seconds_.find(row.name + "/" + form.name);
        return found == seconds_.end() ? std::vector<double>{} : found->second;
    }

private:
    std::map<std::string, std::vector<double>> seconds_;
};

void report(const Collector& times)
{
    std::printf("\nMedians of processor time per frame, and how many times the show's own.\n\n");
    for (const Row& row : rows()) {
        double own = 0.0;
        std::string line;
        for (const Form& form : row.forms) {
            const std::vector<double> seconds = times.of(row, form);
            if (seconds.empty()) {
                continue; // filtered out
            }
            std::array<char, 64> text{};
            const double microseconds = median(seconds) * 1e6;
            if (form.name == kOwnForm) {
                own = microseconds;
                std::snprintf(text.data(), text.size(), "%9.2f us", own);
            } else if (own > 0.0) {
                std::snprintf(text.data(), text.size(), "   %s %.2f us = %.2fx", form.name.c_str(),
                              microseconds, microseconds / own);
            }
            line += text.data();
        }
        if (!line.empty()) {
            std::printf("%-46s%s\n", row.name.c_str(), line.c_str());
        }
    }
}

} // namespace

void addForm(const std::string& row, const std::string& form, std::function<void()> work)
{
    if (rows().empty() || rows().back().name != row) {
        rows().push_back({row, {}});
    }
    rows().back().forms.push_back({form});
    const std::string name = row + "/" + form;
    benchmark::RegisterBenchmark(name.c_str(), [work = std::move(work)](benchmark::State& state) {
        for ([[maybe_unused]] auto frame : state) {
            work();
            benchmark::ClobberMemory();
        }
    });
}

void requireSame(bool same, const char* row)
{
    if (!same) {
        std::fprintf(stderr, "%s: the forms differ\n", row);
        std::exit(1);
    }
}

int main(int argc, char** argv)
{
    // What is given on the command line comes later and wins.
    std::vector<std::string> arguments = {argv[0], "--benchmark_enable_random_interleaving=true",
                                          "--benchmark_repetitions=15",
                                          "--benchmark_min_time=0.05"};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    std::vector<char*> pointers;
    pointers.reserve(arguments.size());
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) {
        return 1;
    }

    addBitmapRows();
    addEffectRows();
    addLineSetRows();
    addPictureRows();

    Collector times;
    benchmark::RunSpecifiedBenchmarks(&times);
    report(times);
    return 0;
}
