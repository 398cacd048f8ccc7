// SPDX-License-Identifier: MIT
// The clock, ready for display: the date, and the time in pieces of which each digit is one, so that a digit
// that changes moves none of the others.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"

#include <QString>

#include <vector>

namespace veslora {

/// A digit, or what is between two.
struct ClockPiece {
    Q_GADGET
    QML_VALUE_TYPE(clockPiece)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(bool isDigit MEMBER isDigit FINAL)

  public:
    int id = 0; ///< its place, from 0
    QString text;
    bool isDigit = false;

    bool operator==(const ClockPiece&) const = default;
};

class ClockViewPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    /// Seconds since 1970, from the view's timeline.
    Q_PROPERTY(double date MEMBER m_date WRITE setDate REQUIRED FINAL)
    /// Points that the time may take.
    Q_PROPERTY(double availableWidth MEMBER m_availableWidth WRITE setAvailableWidth REQUIRED FINAL)
    Q_PROPERTY(QString dateText READ dateText NOTIFY changed FINAL)
    Q_PROPERTY(QString timeText READ timeText NOTIFY changed FINAL)
    /// All of `timeText`.
    Q_PROPERTY(QAbstractItemModel* pieces READ pieces CONSTANT FINAL)
    /// Points: the usual size of the time's letters, or less where it would be too wide.
    Q_PROPERTY(int fontSize READ fontSize NOTIFY changed FINAL)

  public:
    static constexpr int usualSize = 36;
    static constexpr double leastShare = 0.6;  ///< of the usual size
    static constexpr double digitWidth = 0.66; ///< of the size of the letters

    using Presenter::Presenter;

    void setDate(double date);
    void setAvailableWidth(double width);

    [[nodiscard]] QString dateText() const { return m_shown.dateText; }
    [[nodiscard]] QString timeText() const { return m_shown.timeText; }
    [[nodiscard]] QAbstractItemModel* pieces() { return &m_pieces; }
    [[nodiscard]] int fontSize() const { return m_shown.fontSize; }

    /// Cuts a time into its pieces. Text that runs from the right stays whole, as its parts are not in
    /// the order in which they are written.
    [[nodiscard]] static std::vector<ClockPiece> piecesOf(const QString& time);

  protected:
    void start() override {}
    void read() override;

  private:
    struct Shown {
        QString dateText;
        QString timeText;
        int fontSize = usualSize;
        bool operator==(const Shown&) const = default;
    };
    [[nodiscard]] int fittingSize() const;

    double m_date = 0;
    double m_availableWidth = 0;
    double m_usualWidth = 0; ///< points that the time takes at its usual size; measured once for each time
    Shown m_shown;
    RowModel<ClockPiece> m_pieces{"piece"};
};

} // namespace veslora
