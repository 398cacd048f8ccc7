// SPDX-License-Identifier: MIT
// While it lives, every text of the views is written twice, longer than any language would have it.
#pragma once

#include <QCoreApplication>
#include <QTranslator>

namespace veslora {

class LongTexts : public QTranslator {
  public:
    LongTexts() { QCoreApplication::installTranslator(this); }
    LongTexts(const LongTexts&) = delete;
    LongTexts& operator=(const LongTexts&) = delete;
    ~LongTexts() override { QCoreApplication::removeTranslator(this); }

    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* /*context*/, const char* source, const char* /*comment*/,
                                    int /*n*/) const override {
        const QString text = QString::fromUtf8(source);
        return text + QLatin1Char(' ') + text;
    }
};

} // namespace veslora
