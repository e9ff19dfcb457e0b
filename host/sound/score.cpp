#include "host/sound/score.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <tuple>

#include "host/sound/notation.h"
#include "host/sound/pattern_error.h"

namespace kavo::sound {

namespace {

using Kind = PatternNode::Kind;

// Nodes visited while unrolling: eight thousand notes a few brackets deep fit many times over,
// sixty-four rests to the power of thirty-two do not.
constexpr int64_t most_visits = int64_t{1} << 18;

// Longer than any period that can be played, short enough to be multiplied by a factor.
constexpr int64_t endless = int64_t{1} << 40;

int64_t common_multiple(int64_t a, int64_t b) {
  const int128 multiple = int128{a / std::gcd(a, b)} * b;
  return multiple > endless ? endless : static_cast<int64_t>(multiple);
}

int64_t child_count(const PatternNode& node) {
  return std::accumulate(node.children.begin(), node.children.end(), int64_t{0},
                         [](int64_t sum, const auto& child) { return sum + child.copies; });
}

// The number of cycles after which a node repeats itself.
int64_t period(const PatternNode& node) {
  int64_t common = 1;
  for (const auto& child : node.children)
    common = common_multiple(common, period(child));
  switch (node.kind) {
  case Kind::alternation:
    return std::min(endless, common * std::max<int64_t>(1, child_count(node)));
  case Kind::faster:
    return common / std::gcd(common, int64_t{node.factor});
  case Kind::slower:
    return std::min(endless, common * node.factor);
  default:
    return common;
  }
}

// Turns whatever holds no note into a plain rest, so that nobody walks it again.
void prune_silence(PatternNode& node) {
  bool is_silent = node.kind != Kind::note;
  for (auto& child : node.children) {
    prune_silence(child);
    is_silent = is_silent && child.kind == Kind::rest;
  }
  if (!is_silent)
    return;
  node.kind = Kind::rest;
  node.children.clear();
}

// The layers that play on voices of their own: those of the pattern itself or of the brackets
// that enclose all of it. Null when there is but one layer.
const PatternNode* outermost_layers(const PatternNode& root) {
  const PatternNode* node = &root;
  while (node->kind != Kind::layers && node->children.size() == 1)
    node = &node->children.front();
  return node->kind == Kind::layers ? node : nullptr;
}

// What part of a node's own time is looked at, and where that time lies in the score:
// local time t is score time origin + scale * t.
struct Window {
  Fraction from;
  Fraction to;
  Fraction origin;
  Fraction scale;
  int voice = 0;
};

// The part [from, to) of a window, as a child sees it whose time runs `speed` times as fast and
// reads child_start where the parent's reads parent_start.
Window seen_by_child(const Window& window, Fraction from, Fraction to, Fraction parent_start,
                     Fraction child_start, Fraction speed) {
  Window inner = window;
  inner.from = child_start + (std::max(window.from, from) - parent_start) * speed;
  inner.to = child_start + (std::min(window.to, to) - parent_start) * speed;
  inner.scale = window.scale / speed;
  inner.origin = window.origin + window.scale * parent_start - inner.scale * child_start;
  return inner;
}

class Unroller {
public:
  Unroller(const PatternNode& root, Score& score)
      : layers_on_voices_(outermost_layers(root)), score_(score) {}

  void unroll(const PatternNode& node, const Window& window);

private:
  void visit(const PatternNode& node, const Window& window);
  void note(const PatternNode& node, const Window& window);
  void layers(const PatternNode& node, const Window& window);
  void sequence(const PatternNode& node, const Window& window);
  void alternation(const PatternNode& node, const Window& window);
  void spread(const PatternNode& node, const Window& window);
  void scaled(const PatternNode& node, const Window& window, Fraction speed);

  const PatternNode* layers_on_voices_;
  Score& score_;
  int64_t visits_ = 0;
};

void Unroller::unroll(const PatternNode& node, const Window& window) {
  if (window.from >= window.to || node.kind == Kind::rest)
    return;
  if (++visits_ > most_visits)
    throw PatternError(node.column, "expected fewer steps, this unrolls to more than " +
                                        std::to_string(most_visits));
  try {
    visit(node, window);
  } catch (const FractionOverflow&) {
    throw PatternError(node.column, "expected longer notes, this divides time too finely");
  }
}

void Unroller::visit(const PatternNode& node, const Window& window) {
  switch (node.kind) {
  case Kind::note:
    return note(node, window);
  case Kind::rest:
    return;
  case Kind::layers:
    return layers(node, window);
  case Kind::sequence:
    return sequence(node, window);
  case Kind::alternation:
    return alternation(node, window);
  case Kind::spread:
    return spread(node, window);
  case Kind::faster:
    return scaled(node, window, Fraction(node.factor));
  case Kind::slower:
    return scaled(node, window, Fraction(1, node.factor));
  }
}

// A note fills each cycle of its own time; only cycles that begin in the window are struck.
void Unroller::note(const PatternNode& node, const Window& window) {
  for (int64_t cycle = window.from.ceiling(); Fraction(cycle) < window.to; ++cycle) {
    if (score_.notes.size() == most_notes)
      throw PatternError(node.column, "expected at most " + std::to_string(most_notes) + " notes");
    score_.notes.push_back(
        {window.origin + window.scale * cycle, window.scale, window.voice, node.note});
  }
}

void Unroller::layers(const PatternNode& node, const Window& window) {
  int voice = 0;
  for (const auto& layer : node.children) {
    Window inner = window;
    if (&node == layers_on_voices_)
      inner.voice = voice++;
    unroll(layer, inner);
  }
}

void Unroller::sequence(const PatternNode& node, const Window& window) {
  int64_t weights = 0;
  for (const auto& child : node.children)
    weights += int64_t{child.weight} * child.copies;
  for (int64_t cycle = window.from.floor(); Fraction(cycle) < window.to; ++cycle) {
    int64_t before = 0;
    for (const auto& child : node.children) {
      for (int copy = 0; copy < child.copies; ++copy) {
        const Fraction start = Fraction(cycle) + Fraction(before, weights);
        before += child.weight;
        unroll(child, seen_by_child(window, start, Fraction(cycle) + Fraction(before, weights),
                                    start, cycle, Fraction(weights, child.weight)));
      }
    }
  }
}

void Unroller::alternation(const PatternNode& node, const Window& window) {
  const int64_t count = child_count(node);
  for (int64_t cycle = window.from.floor(); Fraction(cycle) < window.to; ++cycle) {
    int64_t turn = cycle % count;
    auto child = node.children.begin();
    for (; turn >= child->copies; ++child)
      turn -= child->copies;
    unroll(*child, seen_by_child(window, cycle, cycle + 1, cycle, cycle / count, 1));
  }
}

// As evenly as whole steps allow: step i is an onset when i * onsets mod steps < onsets.
void Unroller::spread(const PatternNode& node, const Window& window) {
  const int steps = node.factor;
  for (int64_t cycle = window.from.floor(); Fraction(cycle) < window.to; ++cycle) {
    for (int step = 0; step < steps; ++step) {
      if ((step + node.rotation) % steps * node.onsets % steps >= node.onsets)
        continue;
      const Fraction start = Fraction(cycle) + Fraction(step, steps);
      unroll(node.children.front(),
             seen_by_child(window, start, start + Fraction(1, steps), start, cycle, steps));
    }
  }
}

void Unroller::scaled(const PatternNode& node, const Window& window, Fraction speed) {
  unroll(node.children.front(), seen_by_child(window, window.from, window.to, 0, 0, speed));
}

void check_layers(const PatternNode& root) {
  const PatternNode* layers = outermost_layers(root);
  if (layers != nullptr && layers->children.size() > voice_count)
    throw PatternError(layers->children[voice_count].column,
                       "expected at most " + std::to_string(voice_count) + " layers");
}

int64_t checked_period(const PatternNode& root) {
  const int64_t cycles = period(root);
  if (cycles > longest_period)
    throw PatternError(root.column, "expected a pattern that repeats within " +
                                        std::to_string(longest_period) + " cycles");
  return cycles;
}

} // namespace

Score read_score(std::string_view pattern) {
  PatternNode root = parse_pattern(pattern);
  check_layers(root);
  prune_silence(root);
  Score score;
  score.cycles = checked_period(root);
  Unroller(root, score).unroll(root, {.from = 0, .to = score.cycles, .origin = 0, .scale = 1});
  std::stable_sort(score.notes.begin(), score.notes.end(), [](const auto& a, const auto& b) {
    return std::tie(a.onset, a.voice, a.note) < std::tie(b.onset, b.voice, b.note);
  });
  return score;
}

} // namespace kavo::sound
