#pragma once

#include <SDL.h>

namespace corvalta::platform::qt {

// The SDL2 functions that the sounds use, from the library loaded at the first sound. The
// program does not link SDL2: Debian's SDL2 pulls in some thirty libraries (PulseAudio, ALSA,
// Wayland, the codecs of libsndfile), which cost every start about 15 ms and 2.5 MiB whether a
// sound ever plays or not.
struct SdlLibrary {
  decltype(&SDL_GetError) GetError;
  decltype(&SDL_SetHint) SetHint;
  decltype(&SDL_SetHintWithPriority) SetHintWithPriority;
  decltype(&SDL_InitSubSystem) InitSubSystem;
  decltype(&SDL_QuitSubSystem) QuitSubSystem;
  decltype(&SDL_OpenAudioDevice) OpenAudioDevice;
  decltype(&SDL_CloseAudioDevice) CloseAudioDevice;
  decltype(&SDL_PauseAudioDevice) PauseAudioDevice;
  decltype(&SDL_QueueAudio) QueueAudio;
  decltype(&SDL_ClearQueuedAudio) ClearQueuedAudio;
  decltype(&SDL_GetQueuedAudioSize) GetQueuedAudioSize;
  decltype(&SDL_RWFromFile) RWFromFile;
  decltype(&SDL_LoadWAV_RW) LoadWAV_RW;
  decltype(&SDL_FreeWAV) FreeWAV;
  decltype(&SDL_BuildAudioCVT) BuildAudioCVT;
  decltype(&SDL_ConvertAudio) ConvertAudio;

  // Loads the library at the first call and keeps it to the end of the process; null, said
  // once on standard error, when it cannot be loaded or lacks a function.
  static const SdlLibrary* get();
};

}  // namespace corvalta::platform::qt
