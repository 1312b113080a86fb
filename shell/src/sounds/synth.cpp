#include "synth.h"

#include <corvalta/core/sound_lengths.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>

namespace corvalta::shell::sounds {
namespace {

using core::kApplauseLength;
using core::kMicrowaveLength;
using core::kOK3Length;

using Signal = std::vector<double>;

constexpr double twoPi = 2.0 * std::numbers::pi;

std::size_t samplesFor(double seconds) {
  return static_cast<std::size_t>(std::lround(seconds * sampleRate));
}

std::size_t samplesFor(std::chrono::milliseconds length) {
  return samplesFor(std::chrono::duration<double>(length).count());
}

double timeOf(std::size_t index) { return static_cast<double>(index) / sampleRate; }

// A bell-like note: a sine with a slightly inharmonic overtone, a 2 ms attack and an
// exponential decay.
void addBell(Signal& out, double start, double frequency, double decay, double gain) {
  for (auto k = samplesFor(start); k < out.size(); ++k) {
    const double t = timeOf(k) - start;
    const double attack = std::min(1.0, t / 0.002);
    const double tone = std::sin(twoPi * frequency * t) +
                        0.35 * std::sin(twoPi * 2.76 * frequency * t) * std::exp(-t / (decay / 3));
    out[k] += gain * attack * std::exp(-t / decay) * tone;
  }
}

// A steady beep with soft edges, so that it starts and stops without a click.
void addBeep(Signal& out, double start, double length, double frequency) {
  constexpr double edge = 0.008;
  const auto first = samplesFor(start);
  const auto last = std::min(out.size(), samplesFor(start + length));
  for (auto k = first; k < last; ++k) {
    const double t = timeOf(k) - start;
    const double envelope = std::min({1.0, t / edge, (length - t) / edge});
    out[k] += envelope * (std::sin(twoPi * frequency * t) +
                          0.25 * std::sin(twoPi * 3 * frequency * t));
  }
}

// Fades the last `seconds` to silence, so that no sound ends on a click.
void fadeOut(Signal& signal, double seconds) {
  const auto length = std::min(signal.size(), samplesFor(seconds));
  for (std::size_t k = 0; k < length; ++k) {
    signal[signal.size() - 1 - k] *= static_cast<double>(k) / static_cast<double>(length);
  }
}

// Scales the loudest sample to `peak` of full scale and rounds to 16 bits.
Samples toSamples(const Signal& signal, double peak) {
  double loudest = 0;
  for (const double value : signal) {
    loudest = std::max(loudest, std::abs(value));
  }
  const double scale = loudest > 0 ? peak * 32767.0 / loudest : 0.0;
  Samples samples;
  samples.reserve(signal.size());
  for (const double value : signal) {
    samples.push_back(static_cast<std::int16_t>(std::lround(value * scale)));
  }
  return samples;
}

// Uniform in [0, 1) from the engine's raw output, which the standard fixes for every
// platform (its distributions it does not).
double uniform(std::mt19937& engine) {
  return static_cast<double>(engine()) / 4294967296.0;
}

// A band-pass filter (a biquad of the usual cookbook form) around `centre` Hz.
class BandPass {
 public:
  BandPass(double centre, double q) {
    const double w = twoPi * centre / sampleRate;
    const double alpha = std::sin(w) / (2 * q);
    const double a0 = 1 + alpha;
    b0_ = alpha / a0;
    a1_ = -2 * std::cos(w) / a0;
    a2_ = (1 - alpha) / a0;
  }

  double operator()(double in) {
    const double out = b0_ * (in - x2_) - a1_ * y1_ - a2_ * y2_;
    x2_ = x1_;
    x1_ = in;
    y2_ = y1_;
    y1_ = out;
    return out;
  }

 private:
  double b0_, a1_, a2_;
  double x1_ = 0, x2_ = 0, y1_ = 0, y2_ = 0;
};

// One clap: a burst of noise decaying within a few milliseconds, narrowed to the band where
// hands ring, each pair of hands a little different.
void addClap(Signal& out, std::size_t start, std::mt19937& engine) {
  const double gain = 0.4 + 0.6 * uniform(engine);
  const double decay = 0.004 + 0.006 * uniform(engine);
  BandPass filter(900.0 + 1600.0 * uniform(engine), 1.2);
  const auto end = std::min(out.size(), start + samplesFor(0.06));
  for (auto k = start; k < end; ++k) {
    const double noise = 2 * uniform(engine) - 1;
    out[k] += gain * filter(std::exp(-timeOf(k - start) / decay) * noise);
  }
}

}  // namespace

Samples makeOK3() {
  Signal signal(samplesFor(kOK3Length), 0.0);
  addBell(signal, 0.0, 1567.98, 0.07, 0.8);   // G6
  addBell(signal, 0.06, 2093.0, 0.08, 1.0);   // C7
  fadeOut(signal, 0.02);
  return toSamples(signal, 0.7);
}

Samples makeMicrowave() {
  Signal signal(samplesFor(kMicrowaveLength), 0.0);
  for (const double start : {0.0, 0.42, 0.84}) {
    addBeep(signal, start, 0.3, 1000.0);
  }
  return toSamples(signal, 0.6);
}

Samples makeApplause() {
  constexpr double length = std::chrono::duration<double>(kApplauseLength).count();
  Signal signal(samplesFor(kApplauseLength), 0.0);
  std::mt19937 engine(20240611U);
  // The crowd joins in over the first 0.3 s and thins out over the last second.
  for (double t = 0; t < length - 0.05; t += 0.004) {
    const double density = std::min({1.0, (t + 0.05) / 0.3, (length - t) / 1.0});
    if (uniform(engine) < 0.45 * density) {
      addClap(signal, samplesFor(t + 0.004 * uniform(engine)), engine);
    }
  }
  fadeOut(signal, 0.3);
  // Claps are all peaks: a higher ceiling keeps them about as loud as the other two.
  return toSamples(signal, 0.9);
}

}  // namespace corvalta::shell::sounds
