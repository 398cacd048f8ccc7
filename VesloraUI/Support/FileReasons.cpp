// SPDX-License-Identifier: MIT
#include "VesloraUI/Support/FileReasons.h"

#include "VesloraUI/Platform/FileRefusal.h"

#include <QCoreApplication>

namespace veslora::FileReasons {

QString text(const std::error_code& error) {
    if (error == FileRefusal::changed) {
        return QCoreApplication::translate("FileReasons", "another program has just changed it");
    }
    if (error == FileRefusal::hasSecondName) {
        return QCoreApplication::translate("FileReasons",
                                           "it has a second name (a hard link) that would keep the old text");
    }
    if (error == FileRefusal::losesAttributes) {
        return QCoreApplication::translate("FileReasons", "its access list or attributes couldn't be kept");
    }
    if (error == std::errc::no_space_on_device) {
        return QCoreApplication::translate("FileReasons", "the disk is full");
    }
    if (error == std::errc::read_only_file_system) {
        return QCoreApplication::translate("FileReasons", "the disk is read-only");
    }
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted) {
        return QCoreApplication::translate("FileReasons",
                                           "it belongs to somebody else or may not be changed");
    }
    if (error == std::errc::not_a_directory) {
        return QCoreApplication::translate("FileReasons", "it is a link or no folder");
    }
    if (error == std::errc::file_too_large) {
        return QCoreApplication::translate("FileReasons", "it is too large");
    }
    return QString::fromStdString(error.message());
}

} // namespace veslora::FileReasons
