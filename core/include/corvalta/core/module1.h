#pragma once

#include <corvalta/platform/random.h>

#include <cstdint>
#include <memory>
#include <string>

namespace corvalta::core {

// The game's global variables: one instance for the whole process, seen by every handler of
// every window. Handlers meet here and in the controls' properties, nowhere else.
struct Module1Variables {
  std::shared_ptr<platform::Random> R;
  bool SoundFlag = false;
  std::int32_t High = 0;
  std::string Difficulty;
  std::int32_t First = 0;
  std::int32_t Second = 0;
  std::int32_t Third = 0;
  std::int32_t Temp = 0;
  std::int32_t RandomOp1 = 0;
  std::int32_t RandomOp2 = 0;
  std::int32_t X = 0;
  std::int32_t Y = 0;
  double MyAnswer = 0.0;
  double HisAnswer = 0.0;
  std::int32_t Points = 0;
  std::int32_t Seconds = 0;
  bool NewHighScoreFlag = false;
  std::string Name;
};

extern Module1Variables Module1;

}  // namespace corvalta::core
