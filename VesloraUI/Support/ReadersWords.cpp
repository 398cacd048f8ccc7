// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/ReadersWords.h"

#include <QCoreApplication>
#include <QLocale>

namespace veslora {

Words readersWords() {
    const auto translate = [](const char* context, const char* text) {
        return QCoreApplication::translate(context, text).toStdString();
    };
    return Words(translate, QLocale().decimalPoint().toStdString());
}

} // namespace veslora
