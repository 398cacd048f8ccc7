// SPDX-License-Identifier: MIT
// The music widget, ready for display.
#pragma once

#include "VesloraUI/Music/MusicModel.h"
#include "VesloraUI/Support/Presenter.h"

#include <QString>

namespace veslora {

class MusicWidgetPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(veslora::MusicModel* music MEMBER m_music REQUIRED FINAL)
    /// Seconds since 1970, from the view's timeline: everything is read again with each.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    Q_PROPERTY(bool hasTrack READ hasTrack NOTIFY changed FINAL)
    Q_PROPERTY(bool isPlaying READ isPlaying NOTIFY changed FINAL)
    /// Who plays, or that nobody does.
    Q_PROPERTY(QString source READ source NOTIFY changed FINAL)
    Q_PROPERTY(QString title READ title NOTIFY changed FINAL)
    /// The artist, or else the album.
    Q_PROPERTY(QString detail READ detail NOTIFY changed FINAL)
    Q_PROPERTY(QString position READ position NOTIFY changed FINAL)
    Q_PROPERTY(QString duration READ duration NOTIFY changed FINAL)
    /// From 0 to 1; 0 for a track of unknown length.
    Q_PROPERTY(double progress READ progress NOTIFY changed FINAL)

  public:
    /// Parts of the meter, which is drawn again only when one more is lit.
    static constexpr int segments = 16;
    /// Characters of a title that are ever laid out: more than any widget has room for.
    static constexpr int longest = 200;

    using Presenter::Presenter;

    void setDate(double date);

    [[nodiscard]] bool hasTrack() const { return m_shown.hasTrack; }
    [[nodiscard]] bool isPlaying() const { return m_shown.isPlaying; }
    [[nodiscard]] QString source() const { return m_shown.source; }
    [[nodiscard]] QString title() const { return m_shown.title; }
    [[nodiscard]] QString detail() const { return m_shown.detail; }
    [[nodiscard]] QString position() const { return m_shown.position; }
    [[nodiscard]] QString duration() const { return m_shown.duration; }
    [[nodiscard]] double progress() const { return m_shown.progress; }

  protected:
    void start() override;
    void read() override;

  private:
    struct Shown {
        bool hasTrack = false;
        bool isPlaying = false;
        QString source;
        QString title;
        QString detail;
        QString position;
        QString duration;
        double progress = 0;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] Shown look(const NowPlaying& track) const;

    MusicModel* m_music = nullptr;
    double m_date = 0;
    Shown m_shown;
};

} // namespace veslora
