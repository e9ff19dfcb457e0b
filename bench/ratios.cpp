#include "bench/ratios.h"

#include <sstream>
#include <string_view>

namespace kavo::bench {

namespace {

// A word that says how a benchmark is to be judged, its name, and the particulars.
void note(const std::string& kind, const std::string& name, const std::string& particulars) {
  benchmark::AddCustomContext(kind + " " + name, particulars);
}

std::string program_name(std::string_view path) {
  return std::string(path.substr(path.rfind('/') + 1));
}

} // namespace

void expect(const std::string& peer_name, Bound bound) {
  note("expect", peer_name, text(bound));
}

void report_time(const std::string& name, std::optional<Bound> bound) {
  note("time", name, text(bound));
}

void report_counter(const std::string& name, const std::string& counter, const std::string& unit,
                    std::optional<Bound> bound, double factor) {
  std::ostringstream particulars;
  particulars << factor << ';' << unit << ';' << text(bound);
  note("counter", name + ", " + counter, particulars.str());
}

void report_growth(const std::string& name, const std::vector<int>& sizes) {
  std::string particulars;
  for (const int size : sizes)
    particulars += std::to_string(size) + " ";
  note("growth", name, particulars);
}

int run(int argc, char** argv) {
  std::vector<std::string> words{argv[0], "--benchmark_repetitions=9", "--benchmark_min_time=0.02",
                                 "--benchmark_enable_random_interleaving=true",
                                 "--benchmark_report_aggregates_only=false"};
  if (const std::string path = figures_path(program_name(argv[0])); !path.empty())
    words.push_back("--benchmark_out=" + path);
  words.insert(words.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  arguments.reserve(words.size());
  for (auto& word : words)
    arguments.push_back(word.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
    return 1;
  return benchmark::RunSpecifiedBenchmarks() == 0 ? 1 : 0;
}

} // namespace kavo::bench
