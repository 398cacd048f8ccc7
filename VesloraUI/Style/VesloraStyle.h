// SPDX-License-Identifier: MIT
// The colours, fonts and times that every view of the island draws with: the one style singleton of the
// views.
#pragma once

#include "VesloraUI/Style/Accent.h"

#include <QColor>
#include <QList>
#include <QObject>
#include <QQmlEngine>
#include <QString>

namespace veslora {

class ViewEnvironment;

class VesloraStyle : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor accentColor READ accentColor NOTIFY accentChanged FINAL)
    Q_PROPERTY(QColor urgentColor READ urgentColor NOTIFY accentChanged FINAL)
    /// As `ViewEnvironment::reducesMotion`.
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged FINAL)
    Q_PROPERTY(QColor textPrimary READ textPrimary CONSTANT FINAL)
    Q_PROPERTY(QColor textSecondary READ textSecondary CONSTANT FINAL)
    Q_PROPERTY(QColor keySurface READ keySurface CONSTANT FINAL)
    Q_PROPERTY(QColor keySurfacePressed READ keySurfacePressed CONSTANT FINAL)
    Q_PROPERTY(QColor traySurface READ traySurface CONSTANT FINAL)
    Q_PROPERTY(QColor hairline READ hairline CONSTANT FINAL)
    Q_PROPERTY(QColor unlitTick READ unlitTick CONSTANT FINAL)
    Q_PROPERTY(QColor claudeOrange READ claudeOrange CONSTANT FINAL)
    /// Points of the island's shadow picture: how far it reaches past the island, and the size of the corners
    /// of its nine parts.
    Q_PROPERTY(int shadowMargin READ shadowMargin CONSTANT FINAL)
    Q_PROPERTY(int shadowBorder READ shadowBorder CONSTANT FINAL)
    /// The same of the shadow under a module that is dragged.
    Q_PROPERTY(int ghostShadowMargin READ ghostShadowMargin CONSTANT FINAL)
    Q_PROPERTY(int ghostShadowBorder READ ghostShadowBorder CONSTANT FINAL)
    /// Points of the four keys that share the 150 of a small widget, from left to right.
    Q_PROPERTY(QList<double> smallKeyWidths READ smallKeyWidths CONSTANT FINAL)
    Q_PROPERTY(QString systemFont READ systemFont CONSTANT FINAL)
    Q_PROPERTY(QString monospacedFont READ monospacedFont CONSTANT FINAL)
    Q_PROPERTY(QString symbolFont READ symbolFont CONSTANT FINAL)

  public:
    explicit VesloraStyle(ViewEnvironment& environment);

    /// Called by the engine for the singleton. The engine must have been given its `ViewEnvironment`.
    static VesloraStyle* create(QQmlEngine* engine, QJSEngine* scriptEngine);

    /// The singleton of an engine.
    static VesloraStyle* of(QQmlEngine& engine);

    [[nodiscard]] bool reducesMotion() const { return m_reducesMotion; }
    [[nodiscard]] Accent accent() const { return m_accent; }
    [[nodiscard]] QColor accentColor() const { return AccentColors::color(m_accent); }
    [[nodiscard]] QColor urgentColor() const { return AccentColors::urgentColor(m_accent); }

    static QColor textPrimary() { return QColor::fromRgbF(0.95F, 0.95F, 0.95F); }
    static QColor textSecondary() { return QColor::fromRgbF(0.54F, 0.54F, 0.54F); }
    static QColor keySurface() { return QColor::fromRgbF(0.1F, 0.1F, 0.1F); }
    static QColor keySurfacePressed() { return QColor::fromRgbF(0.16F, 0.16F, 0.16F); }
    static QColor traySurface() { return QColor::fromRgbF(0.085F, 0.085F, 0.085F); }
    static QColor hairline() { return QColor::fromRgbF(1, 1, 1, 0.08F); }
    static QColor unlitTick() { return QColor::fromRgbF(1, 1, 1, 0.1F); }
    static QColor claudeOrange();
    static QColor levelLow() { return QColor::fromRgbF(0.243F, 0.878F, 0.478F); }
    static QColor levelMid() { return QColor::fromRgbF(1, 0.773F, 0.239F); }
    static QColor levelHigh() { return QColor::fromRgbF(1, 0.302F, 0.18F); }

    static int shadowMargin();
    static int shadowBorder();
    static int ghostShadowMargin();
    static int ghostShadowBorder();
    static QList<double> smallKeyWidths() { return {34, 35, 35, 34}; }

    /// The colour at a fraction of the way from one to another, channel by channel and in opacity. `fraction`
    /// is from 0 to 1.
    [[nodiscard]] static QColor blend(const QColor& from, const QColor& to, double fraction);

    /// A colour of a dimmed key: as if the key, drawn whole, lay over the island's black at `dimmedOpacity`.
    /// An opacity on the key itself would not do: Qt gives it to each of its parts, and the face shines
    /// through the letters. A colour that is itself laid over another keeps its opacity.
    Q_INVOKABLE [[nodiscard]] static QColor dimmed(const QColor& color);
    static constexpr double dimmedOpacity = 0.4;

    /// Colour of a meter at a fraction from 0 to 1, limited to that range: from low over mid to high.
    Q_INVOKABLE [[nodiscard]] static QColor levelColor(double fraction);

    /// How many of `segments` ticks a fraction lights: its share, rounded up, within 0 and `segments`.
    Q_INVOKABLE [[nodiscard]] static int litSegments(double fraction, int segments);

    /// Colour of the lit tick `index` of a meter that is coloured by place: by its place alone, not by the
    /// reading.
    Q_INVOKABLE [[nodiscard]] static QColor segmentColor(int index, int segments, bool isReversed);

    /// Families that are there: Inter and JetBrains Mono, else the desktop's own.
    [[nodiscard]] static QString systemFont();
    [[nodiscard]] static QString monospacedFont();
    /// The family of the spinners' glyphs, which the other two lack.
    [[nodiscard]] static QString symbolFont();

    /// The spring of everything that moves on the island: seconds, and the share of critical damping.
    static constexpr double motionResponse = 0.3;
    static constexpr double motionDamping = 0.92;

  signals:
    void accentChanged();
    void reducesMotionChanged();

  private:
    void readAccent();
    void readMotion();

    ViewEnvironment& m_environment;
    Accent m_accent = Accent::lime;
    bool m_reducesMotion = false;
};

} // namespace veslora
