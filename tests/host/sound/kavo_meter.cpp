// kavo-meter: a table of how recordings sound, one row to a WAV file as kavo-render writes it.
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "tests/host/sound/analysis.h"
#include "tests/host/sound/loudness.h"

namespace {

namespace analysis = kavo::sound::analysis;

constexpr double rate = 48000.0;
constexpr double small_speaker = 200.0; // Hz: what lies below is not heard from a laptop

constexpr const char* usage =
    "usage: kavo-meter FILE[:FROM-TO] [--less FILE]...\n"
    "\n"
    "Measures WAV files of 48 kHz, stereo, 32-bit floats. FROM and TO are seconds; --less takes\n"
    "another recording away from the one before it, sample by sample.\n"
    "\n"
    "  kavo-meter lock.wav:0-0.104 music.wav:15.36-30.72 music.wav --less dry.wav\n"
    "\n"
    "LUFS   loudness without gates, full range and through a high-pass at 200 Hz\n"
    "peak   of the samples (dBFS) and between them (dBTP)\n"
    "corr   correlation of left and right; S/M: side to mid (dB)\n"
    "Hz     spectral centroid\n";

std::vector<float> samples_of(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(file)), {});
  const auto data = bytes.find("data");
  if (bytes.rfind("RIFF", 0) != 0 || data == std::string::npos)
    throw std::runtime_error("no WAV file: " + path);
  const std::string_view content = std::string_view(bytes).substr(data + 8);
  std::vector<float> samples(content.size() / sizeof(float));
  std::memcpy(samples.data(), content.data(), samples.size() * sizeof(float));
  return samples;
}

struct Recording {
  std::string name;
  std::vector<float> samples;
};

Recording recording_of(const std::string& argument) {
  const auto colon = argument.rfind(':');
  Recording result = {argument, samples_of(argument.substr(0, colon))};
  if (colon == std::string::npos)
    return result;
  char* end = nullptr;
  const double from = std::strtod(argument.c_str() + colon + 1, &end);
  const double to = *end == '-' ? std::strtod(end + 1, &end) : -1.0;
  const auto first = static_cast<int64_t>(std::llround(from * rate)) * 2;
  const auto last = static_cast<int64_t>(std::llround(to * rate)) * 2;
  if (*end != '\0' || first < 0 || last <= first || last > std::ssize(result.samples))
    throw std::runtime_error("no such passage: " + argument);
  result.samples = {result.samples.begin() + first, result.samples.begin() + last};
  return result;
}

void subtract(Recording& from, const std::string& argument) {
  const Recording other = recording_of(argument);
  if (other.samples.size() != from.samples.size())
    throw std::runtime_error("not as long as " + from.name + ": " + argument);
  for (size_t i = 0; i < other.samples.size(); ++i)
    from.samples[i] -= other.samples[i];
  from.name += " less " + argument;
}

void print_row(const Recording& recording) {
  std::vector<float> left, right, mid, side;
  for (size_t i = 0; i + 1 < recording.samples.size(); i += 2) {
    left.push_back(recording.samples[i]);
    right.push_back(recording.samples[i + 1]);
    mid.push_back(left.back() + right.back());
    side.push_back(left.back() - right.back());
  }
  (void)std::printf(
      "%7.2f %7.2f  %7.2f %7.2f  %6.3f %7.1f  %6.0f  %s\n",
      analysis::ungated_loudness(recording.samples),
      analysis::ungated_loudness(analysis::high_passed(recording.samples, small_speaker)),
      analysis::decibels(analysis::peak(recording.samples)), analysis::true_peak(recording.samples),
      analysis::correlation(left, right),
      analysis::decibels(analysis::root_mean_square(side) / analysis::root_mean_square(mid)),
      analysis::spectral_centroid(mid) * rate, recording.name.c_str());
}

std::vector<Recording> recordings_in(int argc, char** argv) {
  std::vector<Recording> recordings;
  for (int i = 1; i < argc; ++i) {
    if (std::string_view(argv[i]) == "--less" && i + 1 < argc && !recordings.empty())
      subtract(recordings.back(), argv[++i]);
    else
      recordings.push_back(recording_of(argv[i]));
  }
  return recordings;
}

} // namespace

int main(int argc, char** argv) {
  if (argc < 2 || std::string_view(argv[1]) == "--help") {
    (void)std::fputs(usage, argc < 2 ? stderr : stdout);
    return argc < 2 ? 2 : 0;
  }
  try {
    const auto recordings = recordings_in(argc, argv);
    (void)std::puts("   LUFS  >200Hz     dBFS    dBTP    corr     S/M      Hz");
    for (const auto& recording : recordings)
      print_row(recording);
  } catch (const std::exception& error) {
    (void)std::fprintf(stderr, "kavo-meter: %s\n", error.what());
    return 1;
  }
  return 0;
}
