// SPDX-License-Identifier: MIT
// The helper as it is, but for whom it trusts and how long it waits: those that the test's environment names.
// The one that is installed knows nothing of this.
#include "UpdateFetcher/Helper.h"

#include <QCoreApplication>
#include <QSslCertificate>

int main(int count, char** arguments) {
    if (!veslora::Helper::prepare(false)) {
        return 1;
    }
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(count, arguments);
    veslora::FetchLimits limits;
    limits.security.setCaCertificates(
        QSslCertificate::fromPath(qEnvironmentVariable("VESLORA_TEST_CERTIFICATE"), QSsl::Pem));
    if (const int milliseconds = qEnvironmentVariableIntValue("VESLORA_TEST_LIMIT"); milliseconds > 0) {
        limits.feed = limits.package = limits.stall = std::chrono::milliseconds(milliseconds);
    }
    return veslora::Helper::run(limits);
}
