#include "bench/figures/plan.h"

#include "bench/figures/growth.h"

namespace kavo::bench {

namespace {

std::optional<double> find(const std::map<std::string, double>& values, const std::string& name) {
  const auto found = values.find(name);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

// "<what>/ours" for "<what>/<peer>".
std::string ours_beside(const std::string& peer_name) {
  return peer_name.substr(0, peer_name.rfind('/')) + "/ours";
}

void append(std::vector<Figure>& figures, const std::vector<Figure>& more) {
  figures.insert(figures.end(), more.begin(), more.end());
}

} // namespace

void Plan::expect(const std::string& peer_name, Bound bound) {
  pairs_.emplace(peer_name, bound);
}

void Plan::report_time(const std::string& name, std::optional<Bound> bound) {
  reported_.push_back({name, "", "ns", bound, 1});
}

void Plan::report_counter(const std::string& name, const std::string& counter,
                          const std::string& unit, std::optional<Bound> bound, double factor) {
  reported_.push_back({name, counter, unit, bound, factor});
}

void Plan::report_growth(const std::string& name, const std::vector<int>& sizes) {
  growths_.push_back({name, sizes});
}

std::optional<double> Plan::Reported::value(const Measured& measured) const {
  if (counter.empty())
    return find(measured.times, name);
  const auto counters = measured.counters.find(name);
  const auto value =
      counters == measured.counters.end() ? std::nullopt : find(counters->second, counter);
  return value ? std::optional(*value * factor) : std::nullopt;
}

std::vector<Figure> Plan::figures(const std::string& program, const Measured& measured) const {
  std::vector<Figure> figures;
  for (const Reported& reported : reported_)
    if (const auto value = reported.value(measured))
      figures.push_back({program, reported.what(), *value, reported.unit, "", 0, reported.bound});
  for (const Growth& growth : growths_)
    append(figures, growth.figures(program, measured));
  append(figures, pair_figures(program, measured));
  return figures;
}

std::vector<Figure> Plan::Growth::figures(const std::string& program,
                                          const Measured& measured) const {
  std::vector<Figure> costs;
  std::vector<double> measured_sizes;
  for (const int size : sizes) {
    if (const auto time = find(measured.times, at(size))) {
      costs.push_back({program, at(size), *time, "ns", "", 0, std::nullopt});
      measured_sizes.push_back(size);
    }
  }
  return growth(std::move(costs), measured_sizes);
}

std::vector<Figure> Plan::pair_figures(const std::string& program, const Measured& measured) const {
  std::vector<Figure> figures;
  for (const auto& [name, time] : measured.times) {
    const auto slash = name.rfind('/');
    const auto ours =
        slash == std::string::npos ? std::nullopt : find(measured.times, ours_beside(name));
    if (!ours || name == ours_beside(name))
      continue;
    const auto bound = pairs_.find(name);
    figures.push_back({program, name.substr(0, slash), *ours, "ns", name.substr(slash + 1), time,
                       bound == pairs_.end() ? std::nullopt : std::optional(bound->second)});
  }
  return figures;
}

std::vector<std::string> Plan::missing(const Measured& measured) const {
  std::vector<std::string> missing;
  const auto demand = [&](const std::string& name) {
    if (!measured.times.contains(name))
      missing.push_back(name);
  };
  for (const Reported& reported : reported_)
    if (!reported.value(measured))
      missing.push_back(reported.what());
  for (const Growth& growth : growths_)
    for (const int size : growth.sizes)
      demand(growth.at(size));
  for (const auto& [name, bound] : pairs_) {
    demand(name);
    demand(ours_beside(name));
  }
  return missing;
}

} // namespace kavo::bench
