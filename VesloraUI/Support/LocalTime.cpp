// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/LocalTime.h"

#include <QDateTime>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace veslora::LocalTime {

namespace {

const QString weekday = QStringLiteral("ddd");

QDateTime localDate(Timestamp time) {
    // Moments that no calendar shows are held to one that does.
    constexpr double farthest = 250'000'000'000;
    const double held = std::isnan(time) ? 0 : std::clamp(time, -farthest, farthest);
    return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(held * 1000));
}

/// How many equal characters follow each other from `at` on.
qsizetype runLength(const QString& text, qsizetype at) {
    qsizetype end = at;
    while (end < text.size() && text[end] == text[at]) {
        ++end;
    }
    return end - at;
}

/// Takes off what led to a part that is left out: blanks and marks, but neither letters nor what is quoted.
void chopSeparator(QString& format) {
    while (!format.isEmpty() && !format.back().isLetterOrNumber() && format.back() != u'\'') {
        format.chop(1);
    }
}

/// What belongs to the number of a day right before it: a dot, or the sign for a day.
QString markAt(const QString& format, qsizetype at) {
    constexpr char16_t lastPlain = 0x7f;
    const QChar mark = at < format.size() ? format[at] : QChar();
    const bool isMark = mark == u'.' || (mark.unicode() > lastPlain && mark.isLetter());
    return isMark ? QStringLiteral("'%1'").arg(mark) : QString();
}

/// What stands for a run of one letter of a pattern; empty where it is left out.
QString fieldOf(const QString& format, qsizetype at, qsizetype length) {
    if (format[at] == u'M') {
        return QStringLiteral("MMM");
    }
    if (format[at] != u'd') {
        return {};
    }
    constexpr qsizetype longestNumber = 2;
    return length > longestNumber ? weekday : QStringLiteral("d") + markAt(format, at + length);
}

} // namespace

QString shortTime(Timestamp time, const QLocale& locale) {
    QString format = shortTimeFormat(locale.timeFormat(QLocale::ShortFormat));
    // A part of the day finer than its halves, which Qt takes from the locale but can't tell.
    format.replace(u'B', QStringLiteral("AP"));
    return locale.toString(localDate(time).time(), format);
}

QString shortTimeFormat(const QString& format) {
    QString result;
    bool isQuoted = false;
    for (qsizetype at = 0; at < format.size();) {
        const QChar letter = format[at];
        const qsizetype length = runLength(format, at);
        isQuoted = isQuoted != (letter == u'\'' && length % 2 == 1);
        if (!isQuoted && (letter == u's' || letter == u'z' || letter == u't')) {
            chopSeparator(result);
        } else {
            result += QStringView(format).mid(at, length);
        }
        at += length;
    }
    return result.trimmed();
}

QString shortDateFormat(const QString& longFormat) {
    QStringList fields;
    bool isQuoted = false;
    for (qsizetype at = 0; at < longFormat.size();) {
        const qsizetype length = runLength(longFormat, at);
        if (longFormat[at] == u'\'') {
            isQuoted = isQuoted != (length % 2 == 1);
        } else if (!isQuoted) {
            fields << fieldOf(longFormat, at, length);
        }
        at += length;
    }
    fields.removeAll(QString());
    const bool hasDay =
        std::ranges::any_of(fields, [](const QString& field) { return field.startsWith(u'd'); });
    if (hasDay && !fields.contains(weekday)) {
        fields.prepend(weekday);
    }
    return fields.join(u' ');
}

QString shortDate(Timestamp time, const QLocale& locale) {
    return locale.toString(localDate(time).date(), shortDateFormat(locale.dateFormat(QLocale::LongFormat)));
}

} // namespace veslora::LocalTime
