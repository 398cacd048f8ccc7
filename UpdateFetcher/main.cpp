// SPDX-License-Identifier: MIT
// veslora-updates: looks for a newer release, or brings its package, as one question on its standard input
// asks. It lives for one job only, so that neither TLS nor anything that reads a stranger's bytes is ever
// part of the program.
#include "UpdateFetcher/Helper.h"

#include <QCoreApplication>

int main(int count, char** arguments) {
    if (!veslora::Helper::prepare(VESLORA_LIMITS_MEMORY)) {
        return 1;
    }
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(count, arguments);
    return veslora::Helper::run({});
}
