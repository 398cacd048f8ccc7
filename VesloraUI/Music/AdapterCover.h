// SPDX-License-Identifier: MIT
// The picture of the cover that the media adapter reports, decoded in the background. Main thread only.
#pragma once

#include "VesloraUI/Platform/Scheduler.h"

#include <QImage>

#include <functional>
#include <memory>
#include <string>

namespace veslora {

class AdapterCover {
  public:
    /// `onDecoded` is called once a picture was decoded, or could not be.
    AdapterCover(Scheduler& scheduler, std::function<void()> onDecoded);

    /// Takes the cover as it is reported now, as base64; null for none. Begins to decode it, unless it is the
    /// one that was taken last. A cover that was replaced is never told.
    void take(const std::string* base64);

    /// Whether the cover that was taken last is still being decoded.
    [[nodiscard]] bool isDecoding() const { return m_task.isActive(); }
    /// Null while there is none, while it is being decoded, and where it is no picture.
    [[nodiscard]] const QImage& image() const { return m_image; }

  private:
    void decode();

    Scheduler& m_scheduler;
    std::function<void()> m_onDecoded;
    /// Of the last cover; shared with the background.
    std::shared_ptr<const std::string> m_base64;
    QImage m_image;
    Task m_task;
};

} // namespace veslora
