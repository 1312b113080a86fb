#include "sdl_library.h"

#include <QLibrary>

#include <cstdio>
#include <optional>
#include <type_traits>

namespace corvalta::platform::qt {
namespace {

std::optional<SdlLibrary> load() {
  // libSDL2-2.0.so.0, the name that programs linking SDL2 ask for. QLibrary leaves it loaded.
  QLibrary file(QStringLiteral("SDL2-2.0"), 0);
  if (!file.load()) {
    std::fprintf(stderr, "corvalta: no sound: %s\n", qPrintable(file.errorString()));
    return std::nullopt;
  }
  SdlLibrary sdl{};
  const char* missing = nullptr;
  const auto bind = [&](auto& function, const char* name) {
    function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(file.resolve(name));
    if (function == nullptr && missing == nullptr) {
      missing = name;
    }
  };
  bind(sdl.GetError, "SDL_GetError");
  bind(sdl.SetHint, "SDL_SetHint");
  bind(sdl.SetHintWithPriority, "SDL_SetHintWithPriority");
  bind(sdl.InitSubSystem, "SDL_InitSubSystem");
  bind(sdl.QuitSubSystem, "SDL_QuitSubSystem");
  bind(sdl.OpenAudioDevice, "SDL_OpenAudioDevice");
  bind(sdl.CloseAudioDevice, "SDL_CloseAudioDevice");
  bind(sdl.PauseAudioDevice, "SDL_PauseAudioDevice");
  bind(sdl.QueueAudio, "SDL_QueueAudio");
  bind(sdl.ClearQueuedAudio, "SDL_ClearQueuedAudio");
  bind(sdl.GetQueuedAudioSize, "SDL_GetQueuedAudioSize");
  bind(sdl.RWFromFile, "SDL_RWFromFile");
  bind(sdl.LoadWAV_RW, "SDL_LoadWAV_RW");
  bind(sdl.FreeWAV, "SDL_FreeWAV");
  bind(sdl.BuildAudioCVT, "SDL_BuildAudioCVT");
  bind(sdl.ConvertAudio, "SDL_ConvertAudio");
  if (missing != nullptr) {
    std::fprintf(stderr, "corvalta: no sound: %s lacks %s\n", qPrintable(file.fileName()), missing);
    return std::nullopt;
  }
  return sdl;
}

}  // namespace

const SdlLibrary* SdlLibrary::get() {
  static const std::optional<SdlLibrary> library = load();
  return library ? &*library : nullptr;
}

}  // namespace corvalta::platform::qt
