// SPDX-License-Identifier: MIT
#include "VesloraUI/Style/VesloraStyle.h"

#include "VesloraCore/Agents/AgentTraits.h"
#include "VesloraUI/Platform/Appearance.h"
#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Store/Defaults.h"
#include "VesloraUI/Store/SettingsKeys.h"
#include "VesloraUI/Style/StyleImages.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QFontDatabase>

#include <algorithm>
#include <cmath>

namespace veslora {

namespace {

QString familyOr(const QString& family, QFontDatabase::SystemFont otherwise) {
    return QFontDatabase::hasFamily(family) ? family : QFontDatabase::systemFont(otherwise).family();
}

} // namespace

VesloraStyle::VesloraStyle(ViewEnvironment& environment) : m_environment(environment) {
    connect(&environment.settings(), &Defaults::changed, this, &VesloraStyle::readAccent);
    connect(&environment.appearance(), &Appearance::changed, this, &VesloraStyle::readMotion);
    readAccent();
    readMotion();
}

VesloraStyle* VesloraStyle::create(QQmlEngine* engine, QJSEngine* /*scriptEngine*/) {
    return new VesloraStyle(ViewEnvironment::of(engine));
}

VesloraStyle* VesloraStyle::of(QQmlEngine& engine) {
    return engine.singletonInstance<VesloraStyle*>(qmlTypeId("Veslora", 1, 0, "VesloraStyle"));
}

QColor VesloraStyle::claudeOrange() {
    constexpr AgentColor orange = veslora::claudeOrange;
    return {orange.red, orange.green, orange.blue};
}

void VesloraStyle::readAccent() {
    const auto stored = m_environment.settings().stringValue(SettingsKeys::accent);
    assign(this, m_accent, AccentColors::fromStored(stored), &VesloraStyle::accentChanged);
}

void VesloraStyle::readMotion() {
    assign(this, m_reducesMotion, m_environment.reducesMotion(), &VesloraStyle::reducesMotionChanged);
}

int VesloraStyle::shadowMargin() {
    return StyleImages::shadowMargin;
}

int VesloraStyle::shadowBorder() {
    return StyleImages::shadowBorder;
}

int VesloraStyle::ghostShadowMargin() {
    return StyleImages::ghostShadowMargin;
}

int VesloraStyle::ghostShadowBorder() {
    return StyleImages::ghostShadowBorder;
}

QColor VesloraStyle::blend(const QColor& from, const QColor& to, double fraction) {
    const auto channel = [fraction](float start, float end) {
        return static_cast<float>(start + (end - start) * fraction);
    };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()), channel(from.alphaF(), to.alphaF()));
}

QColor VesloraStyle::dimmed(const QColor& color) {
    QColor black(Qt::black);
    black.setAlphaF(color.alphaF());
    return blend(black, color, dimmedOpacity);
}

QColor VesloraStyle::levelColor(double fraction) {
    const double place = std::clamp(fraction, 0.0, 1.0);
    return place < 0.5 ? blend(levelLow(), levelMid(), 2 * place)
                       : blend(levelMid(), levelHigh(), 2 * (place - 0.5));
}

int VesloraStyle::litSegments(double fraction, int segments) {
    const double lit = std::ceil(fraction * segments);
    return std::isnan(lit)
               ? 0
               : static_cast<int>(std::clamp(lit, 0.0, static_cast<double>(std::max(segments, 0))));
}

QColor VesloraStyle::segmentColor(int index, int segments, bool isReversed) {
    const double place = segments < 2 ? 0.0 : static_cast<double>(index) / (segments - 1);
    return levelColor(isReversed ? 1 - place : place);
}

QString VesloraStyle::systemFont() {
    static const QString family = familyOr(QStringLiteral("Inter"), QFontDatabase::GeneralFont);
    return family;
}

QString VesloraStyle::monospacedFont() {
    static const QString family = familyOr(QStringLiteral("JetBrains Mono"), QFontDatabase::FixedFont);
    return family;
}

QString VesloraStyle::symbolFont() {
    static const QString family = familyOr(QStringLiteral("DejaVu Sans"), QFontDatabase::GeneralFont);
    return family;
}

} // namespace veslora
