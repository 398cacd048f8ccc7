// SPDX-License-Identifier: MIT
// The meters widget, ready for display. While it is on screen it is one of the sampler's viewers.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"
#include "VesloraUI/Widgets/SystemSampler.h"

#include <QPointer>
#include <QString>

#include <vector>

namespace veslora {

/// One meter of the widget.
struct MeterRow {
    Q_GADGET
    QML_VALUE_TYPE(meterRow)
    Q_PROPERTY(QString label MEMBER label FINAL)
    Q_PROPERTY(double fraction MEMBER fraction FINAL)
    Q_PROPERTY(QString figure MEMBER figure FINAL)
    Q_PROPERTY(QString detail MEMBER detail FINAL)
    Q_PROPERTY(bool isUrgent MEMBER isUrgent FINAL)

  public:
    QString id; ///< the label
    QString label;
    double fraction = 0; ///< 0 to 1; 0 too where there is no figure
    QString figure;
    QString detail;
    bool isUrgent = false;

    bool operator==(const MeterRow&) const = default;
};

class MetersWidgetPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    Q_DISABLE_COPY_MOVE(MetersWidgetPresenter)
    Q_PROPERTY(veslora::SystemSampler* sampler READ sampler WRITE setSampler REQUIRED FINAL)
    Q_PROPERTY(bool isOnScreen MEMBER m_isOnScreen WRITE setOnScreen REQUIRED FINAL)
    /// Processor, memory, and the battery or else the disk.
    Q_PROPERTY(QAbstractItemModel* rows READ rows CONSTANT FINAL)

  public:
    using Presenter::Presenter;
    ~MetersWidgetPresenter() override;

    [[nodiscard]] SystemSampler* sampler() const { return m_sampler; }
    void setSampler(SystemSampler* sampler) { m_sampler = sampler; }
    void setOnScreen(bool isOnScreen);

    [[nodiscard]] QAbstractItemModel* rows() { return &m_rows; }

  protected:
    void start() override;
    void read() override;

  private:
    void look();
    [[nodiscard]] std::vector<MeterRow> freshRows() const;

    QPointer<SystemSampler> m_sampler;
    bool m_isOnScreen = false;
    bool m_isViewer = false;
    RowModel<MeterRow> m_rows{"row"};
};

} // namespace veslora
