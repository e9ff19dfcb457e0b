// Maps beside the standard library's, by keys of some length, from nothing to so many entries.
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/ratios.h"
#include "runtime/qor.h"

namespace {

std::vector<std::string> make_keys(int count) {
  std::vector<std::string> keys;
  for (int i = 0; i < count; ++i)
    keys.push_back("key " + std::to_string(i));
  return keys;
}

QorMap* new_map(const std::vector<std::string>& keys) {
  auto* map = qor_map_new();
  for (const std::string& key : keys)
    qor_map_set_f64(map, key.c_str(), 1.0);
  return map;
}

using Peer = std::unordered_map<std::string, double>;

// From the same pointers to characters as ours.
Peer peer_with(const std::vector<std::string>& keys) {
  Peer map;
  for (const std::string& key : keys)
    map.insert_or_assign(key.c_str(), 1.0);
  return map;
}

// What is looked in lives as long as the process.
void add_size(int count) {
  const auto keys = make_keys(count);
  const std::string size = std::to_string(count) + " keys";
  for (const std::string name : {"insert ", "find "})
    kavo::bench::expect(name + size + "/std::unordered_map", kavo::bench::at_least(0.5));
  kavo::bench::add("insert " + size + "/ours", [=] { qor_map_free(new_map(keys)); });
  kavo::bench::add("insert " + size + "/std::unordered_map",
                   [=] { benchmark::DoNotOptimize(peer_with(keys).size()); });
  const auto* ours = new_map(keys);
  kavo::bench::add("find " + size + "/ours", [=] {
    for (const std::string& key : keys)
      benchmark::DoNotOptimize(qor_map_get_f64(ours, key.c_str()));
  });
  const auto* peer = new Peer(peer_with(keys));
  kavo::bench::add("find " + size + "/std::unordered_map", [=] {
    for (const std::string& key : keys)
      benchmark::DoNotOptimize(peer->find(key.c_str())->second);
  });
}

} // namespace

int main(int argc, char** argv) {
  for (const int count : {5, 100, 10000, 1000000})
    add_size(count);
  return kavo::bench::run(argc, argv);
}
