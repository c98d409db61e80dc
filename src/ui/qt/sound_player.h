// Plays one sound file at a time, without waiting for it.
// Room: ui. Used by: the Qt user interface.
// May touch: the sound device, where there is one and the build knows how.
// Must not: wait: without a device a sound may never end.
// Invariant: a new sound replaces the one that is still playing.
#pragma once

#include "brindle/text.h"

#include <memory>

namespace brindle {

class SoundPlayer {
public:
  SoundPlayer();
  ~SoundPlayer();
  SoundPlayer(const SoundPlayer&) = delete;
  SoundPlayer& operator=(const SoundPlayer&) = delete;

  void Play(const CString& path);

private:
  struct Effect;
  std::unique_ptr<Effect> m_pEffect;
};

} // namespace brindle
