#include "ui/qt/sound_player.h"

#ifdef BRINDLE_QT_MULTIMEDIA
#include "ui/qt/qt_text.h"

#include <QAudioDevice>
#include <QFileInfo>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QUrl>
#endif

namespace brindle {

#ifdef BRINDLE_QT_MULTIMEDIA

struct SoundPlayer::Effect {
  QSoundEffect sound;
};

void SoundPlayer::Play(const CString& path) {
  m_pEffect.reset();
  const QString file = PathToQt(path);
  if (!QFileInfo(file).isFile() || QMediaDevices::defaultAudioOutput().isNull())
    return;
  m_pEffect = std::make_unique<Effect>();
  m_pEffect->sound.setSource(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()));
  m_pEffect->sound.play(); // as soon as it is read
}

#else

struct SoundPlayer::Effect {};

void SoundPlayer::Play(const CString&) {}

#endif

SoundPlayer::SoundPlayer() = default;

SoundPlayer::~SoundPlayer() = default;

} // namespace brindle
