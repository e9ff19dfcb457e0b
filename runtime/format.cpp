#include "runtime/format.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <span>
#include <string_view>

#include "runtime/bridge.h"
#include "runtime/internal/array_slots.h"
#include "runtime/internal/containers.h"
#include "runtime/internal/placeholder.h"
#include "runtime/internal/strings.h"
#include "runtime/qorrt.h"

namespace {

constexpr size_t longest_output = 4090;

struct Argument {
  char kind = 'f';
  qor_slot value{.f64 = 0.0};
};

qor::String host_value_text(const qor::Placeholder& placeholder, int64_t value) {
  constexpr std::string_view number_types = "Xdefgx";
  if (number_types.find(placeholder.type) != std::string_view::npos)
    return qor::number_text(placeholder, qorrt_val_to_f64(qor_runtime_handle(), value));
  auto* text = qorrt_val_to_str(qor_runtime_handle(), value);
  qor::String copy(qor::text_of(text));
  std::free(text);
  return copy;
}

qor::String argument_text(const qor::Placeholder& placeholder, const Argument& argument) {
  switch (argument.kind) {
  case 's':
    return qor::String(qor::text_of(argument.value.str).substr(0, qor::longest_placeholder));
  case 'h':
    return host_value_text(placeholder, argument.value.i64);
  case 'i':
    return qor::number_text(placeholder, static_cast<double>(argument.value.i64));
  default:
    return qor::number_text(placeholder, argument.value.f64);
  }
}

// Fills the placeholders of one format text, front to back.
class Formatter {
public:
  Formatter(std::string_view format, std::span<const Argument> arguments)
      : rest_(format), arguments_(arguments) {
    constexpr size_t usual_length = 8;
    output_.reserve(format.size() + arguments.size() * usual_length);
  }

  char* run() {
    while (!rest_.empty() && output_.size() < longest_output)
      step();
    output_.resize(std::min(output_.size(), longest_output));
    return qor::new_string(output_);
  }

private:
  void step() {
    const auto brace = std::min(rest_.find('{'), rest_.size());
    output_ += rest_.substr(0, brace);
    rest_.remove_prefix(brace);
    if (rest_.starts_with("{{"))
      copy_brace(2);
    else if (!rest_.empty())
      fill_or_copy();
  }

  void copy_brace(size_t read) {
    output_ += '{';
    rest_.remove_prefix(read);
  }

  void fill_or_copy() {
    const auto close = has_close_ ? rest_.find('}') : std::string_view::npos;
    has_close_ = close != std::string_view::npos;
    if (!has_close_)
      return copy_brace(1);
    const auto placeholder = qor::read_placeholder(rest_.substr(1, close - 1));
    output_ += qor::padded(placeholder, argument_text(placeholder, next_argument()));
    rest_.remove_prefix(close + 1);
  }

  Argument next_argument() { return next_ < arguments_.size() ? arguments_[next_++] : Argument(); }

  std::string_view rest_;
  std::span<const Argument> arguments_;
  size_t next_ = 0;
  bool has_close_ = true; // once none is found there is none further on
  qor::String output_;
};

char* format_with(const char* format, std::span<const Argument> arguments) {
  return Formatter(qor::text_of(format), arguments).run();
}

Argument number(double x) {
  return {.value = {.f64 = x}};
}

char* format_list(const char* format, std::initializer_list<Argument> arguments) {
  return format_with(format, std::span(arguments.begin(), arguments.size()));
}

char* format_typed(const char* format, const char* types, std::initializer_list<qor_slot> slots) {
  auto letters = qor::text_of(types);
  qor::Vector<Argument> arguments;
  for (const auto& slot : slots) {
    arguments.push_back({.kind = letters.empty() ? 'f' : letters.front(), .value = slot});
    letters.remove_prefix(letters.empty() ? 0 : 1);
  }
  return format_with(format, arguments);
}

} // namespace

char* qor_format(const char* format, const QorArray* arguments) {
  qor::Vector<Argument> list;
  for (int64_t i = 0; i < std::ssize(qor::slots_of(arguments)); ++i) {
    const bool is_string = qor::reference_kind(arguments, i) == QOR_TAG_STRING;
    list.push_back({.kind = is_string ? 's' : 'f', .value = {.f64 = arguments->data[i]}});
  }
  return format_with(format, list);
}

char* qor_format1(const char* format, double a) {
  return format_list(format, {number(a)});
}

char* qor_format2(const char* format, double a, double b) {
  return format_list(format, {number(a), number(b)});
}

char* qor_format3(const char* format, double a, double b, double c) {
  return format_list(format, {number(a), number(b), number(c)});
}

char* qor_format4(const char* format, double a, double b, double c, double d) {
  return format_list(format, {number(a), number(b), number(c), number(d)});
}

char* qor_format1_t(const char* format, const char* types, qor_slot a) {
  return format_typed(format, types, {a});
}

char* qor_format2_t(const char* format, const char* types, qor_slot a, qor_slot b) {
  return format_typed(format, types, {a, b});
}

char* qor_format3_t(const char* format, const char* types, qor_slot a, qor_slot b, qor_slot c) {
  return format_typed(format, types, {a, b, c});
}

char* qor_format4_t(const char* format, const char* types, qor_slot a, qor_slot b, qor_slot c,
                    qor_slot d) {
  return format_typed(format, types, {a, b, c, d});
}
