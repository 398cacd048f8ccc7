// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/TimerLengthDescription.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <cmath>

namespace veslora {

namespace {

constexpr double longestSeconds = 3600.0 * 1'000'000;

QString translated(const char* source) {
    return QCoreApplication::translate("TimerLength", source);
}

/// One part of the length, or nothing where it is zero.
QStringList part(const char* pattern, long count) {
    return count > 0 ? QStringList{translated(pattern).arg(QLocale().toString(count))} : QStringList();
}

} // namespace

QString timerLengthDescription(double seconds) {
    // Written so that a value that is no number fails the test too.
    const double limited = seconds > 0 ? std::fmin(seconds, longestSeconds) : 0;
    const long total = std::lrint(limited);
    const auto hours = QT_TRANSLATE_NOOP("TimerLength", "%1 hr");
    const auto minutes = QT_TRANSLATE_NOOP("TimerLength", "%1 min");
    const auto rest = QT_TRANSLATE_NOOP("TimerLength", "%1 sec");
    const QStringList parts =
        part(hours, total / 3600) + part(minutes, total / 60 % 60) + part(rest, total % 60);
    return parts.isEmpty() ? translated(rest).arg(QLocale().toString(0))
                           : parts.join(translated(QT_TRANSLATE_NOOP("TimerLength", ", ")));
}

} // namespace veslora
