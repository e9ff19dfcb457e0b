#include "tests/host/sound/studio.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "host/sound/tools/script.h"

namespace kavo::sound {

Studio::Studio(int rate, int64_t block) {
  auto output = std::make_unique<MemoryOutput>(rate, block);
  output_ = output.get();
  player_ = std::make_unique<Player>(std::move(output), [this] { return output_->seconds(); });
  player_->init();
}

void Studio::run(const std::string& lines) {
  std::istringstream stream(lines);
  run_script(stream, *player_, *output_);
}

void Studio::set_up_music() {
  run(music_script());
}

std::vector<float> Studio::channel(size_t first) const {
  std::vector<float> samples;
  samples.reserve(interleaved().size() / 2);
  for (size_t i = first; i < interleaved().size(); i += 2)
    samples.push_back(interleaved()[i]);
  return samples;
}

std::string music_script() {
  std::ifstream file(KAVO_MUSIC_SCRIPT);
  if (!file)
    throw std::runtime_error("cannot read " KAVO_MUSIC_SCRIPT);
  std::string script;
  for (std::string line; std::getline(file, line);)
    if (line.starts_with("SOUND."))
      script += line + '\n';
  return script;
}

std::string music_pattern() {
  const std::string script = music_script();
  const auto from = script.find('"') + 1;
  return script.substr(from, script.rfind('"') - from);
}

} // namespace kavo::sound
