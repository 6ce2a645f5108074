// media/null_output.h — "null:", which takes pictures and writes nothing.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "media/clip_output.h"

namespace media {

class NullOutput : public ClipOutput {
 public:
  explicit NullOutput(std::string pixelFormat) : pixelFormat_(std::move(pixelFormat)) {}
  void write(const Picture& /*picture*/) override {}
  void finish() override {}
  const std::vector<std::string>& notes() const noexcept override { return notes_; }
  std::string encoderName() const override { return "null"; }
  std::string pixelFormat() const override { return pixelFormat_; }

 private:
  std::string pixelFormat_;
  std::vector<std::string> notes_;
};

}  // namespace media
