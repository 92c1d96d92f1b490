#include "peer_ratio.h"

#include <cstdio>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

struct Key {
    std::string operation;
    std::string argument;
    bool operator<(const Key& other) const {
        return operation != other.operation ? operation < other.operation
                                            : argument < other.argument;
    }
};

// Collects the CPU time per benchmark (the median over repetitions, when repeated) while the console reporter prints as usual.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            if (run.error_occurred) continue;
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.run_type != Run::RT_Iteration && !median) continue;
            // "<operation>/<implementation>" as named, then the benchmark's own arguments.
            const std::string& name = run.run_name.function_name;
            const auto slash = name.find('/');
            if (slash == std::string::npos) continue;
            const auto extra = name.find('/', slash + 1);
            std::string argument = extra == std::string::npos ? "" : name.substr(extra + 1);
            if (!run.run_name.args.empty())
                argument += (argument.empty() ? "" : "/") + run.run_name.args;
            const Key key{name.substr(0, slash), argument};
            const std::string impl = name.substr(
                slash + 1, extra == std::string::npos ? std::string::npos : extra - slash - 1);
            // With repetitions the median is used; a single run is used as it stands.
            auto& slot = times_[key][impl];
            if (median || !slot.fromMedian) slot = {run.GetAdjustedCPUTime(), median};
        }
    }

    void PrintRatios() const {
        std::printf("\n%-40s %-12s %s\n", "operation", "argument", "ours / peer");
        for (const auto& [key, impls] : times_) {
            const auto ours = impls.find("ours");
            if (ours == impls.end()) continue;
            std::string line;
            double best = std::numeric_limits<double>::infinity();
            for (const auto& [impl, measured] : impls) {
                if (impl == "ours") continue;
                const double time = measured.seconds;
                char cell[64];
                std::snprintf(cell, sizeof cell, "%s %.2f  ", impl.c_str(), ours->second.seconds / time);
                line += cell;
                if (time < best) best = time;
            }
            if (line.empty()) {
                line = "(no peer measured)";
            } else {
                char cell[64];
                std::snprintf(cell, sizeof cell, "| vs fastest %.2f", ours->second.seconds / best);
                line += cell;
            }
            std::printf("%-40s %-12s %s\n", key.operation.c_str(), key.argument.c_str(),
                        line.c_str());
        }
    }

private:
    struct Time {
        double seconds = 0;
        bool fromMedian = false;
    };
    std::map<Key, std::map<std::string, Time>> times_;
};

void ReportMissingPeers() {
#ifndef MATH_HAVE_EIGEN
    std::printf("Eigen not found: its comparisons are skipped (apt-get install libeigen3-dev)\n");
#endif
#ifndef MATH_HAVE_GLM
    std::printf("GLM not found: its comparisons are skipped (apt-get install libglm-dev)\n");
#endif
#ifndef MATH_HAVE_FFTW
    std::printf("FFTW not found: its comparisons are skipped (apt-get install libfftw3-dev)\n");
#endif
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    ReportMissingPeers();
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    benchmark::Shutdown();
    return 0;
}
