// Whole-array arithmetic beside Eigen's, sorting beside the standard library's stable sort.
#include <Eigen/Core>
#include <algorithm>
#include <random>
#include <string>
#include <vector>

#include "bench/ratios.h"
#include "runtime/qor.h"

namespace {

using Peer = Eigen::ArrayXd;

struct Pair {
  QorArray* ours;
  Peer peer;
};

// Numbers from 1 to 2, the same ones in both.
Pair make_pair(int64_t length, unsigned seed) {
  std::mt19937_64 random(seed);
  Pair pair{qor_array_new(length), Peer(length)};
  for (int64_t i = 0; i < length; ++i) {
    pair.peer[i] = 1.0 + static_cast<double>(random() >> 11) * 0x1p-53;
    qor_array_set(pair.ours, i, pair.peer[i]);
  }
  return pair;
}

// The arrays live as long as the process.
void add_arithmetic(const std::string& size, int64_t length) {
  const auto a = make_pair(length, 1);
  const auto b = make_pair(length, 2);
  const auto add_op = [&](const std::string& name, int64_t code, auto peer) {
    kavo::bench::add(name + size + "/ours",
                     [=] { qor_array_free(qor_array_binop(a.ours, b.ours, code)); });
    kavo::bench::add(name + size + "/eigen",
                     [=] { benchmark::DoNotOptimize(Peer(peer(a.peer, b.peer)).data()); });
  };
  for (const std::string name : {"add ", "multiply ", "divide ", "scale ", "sum ", "dot "})
    kavo::bench::expect(name + size + "/eigen", kavo::bench::at_least(0.9));
  add_op("add ", QOR_OP_ADD, [](const Peer& x, const Peer& y) { return x + y; });
  add_op("multiply ", QOR_OP_MULTIPLY, [](const Peer& x, const Peer& y) { return x * y; });
  add_op("divide ", QOR_OP_DIVIDE, [](const Peer& x, const Peer& y) { return x / y; });
  kavo::bench::add("scale " + size + "/ours",
                   [=] { qor_array_free(qor_array_scalar_op(a.ours, 1.5, QOR_OP_MULTIPLY, 0)); });
  kavo::bench::add("scale " + size + "/eigen",
                   [=] { benchmark::DoNotOptimize(Peer(a.peer * 1.5).data()); });
  kavo::bench::add("sum " + size + "/ours",
                   [=] { benchmark::DoNotOptimize(qor_array_sum(a.ours)); });
  kavo::bench::add("sum " + size + "/eigen", [=] { benchmark::DoNotOptimize(a.peer.sum()); });
  kavo::bench::add("dot " + size + "/ours",
                   [=] { benchmark::DoNotOptimize(qor_array_dot(a.ours, b.ours)); });
  kavo::bench::add("dot " + size + "/eigen",
                   [=] { benchmark::DoNotOptimize(a.peer.matrix().dot(b.peer.matrix())); });
}

void add_sort(const std::string& size, int64_t length) {
  const auto pair = make_pair(length, 3);
  const std::vector<double> values(pair.peer.data(), pair.peer.data() + length);
  kavo::bench::add("sort " + size + "/ours", [=] { qor_array_free(qor_array_sort(pair.ours)); });
  kavo::bench::expect("sort " + size + "/std::stable_sort", kavo::bench::at_least(0.9));
  kavo::bench::add("sort " + size + "/std::stable_sort", [=] {
    auto copy = values;
    std::ranges::stable_sort(copy);
    benchmark::DoNotOptimize(copy.data());
  });
}

} // namespace

int main(int argc, char** argv) {
  add_arithmetic("1000", 1000);
  add_arithmetic("100000", 100000);
  add_sort("1000", 1000);
  add_sort("100000", 100000);
  return kavo::bench::run(argc, argv);
}
