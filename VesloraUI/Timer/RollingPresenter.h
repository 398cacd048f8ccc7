// SPDX-License-Identifier: MIT
// A number or a time in pieces of which each digit is one, so that a digit that changes can roll in its own
// place.
#pragma once

#include "VesloraUI/Support/Presenter.h"
#include "VesloraUI/Support/RowModel.h"

#include <QString>

namespace veslora {

/// A digit, or the colon between two.
struct RollingPiece {
    Q_GADGET
    QML_VALUE_TYPE(rollingPiece)
    Q_PROPERTY(QString text MEMBER text FINAL)
    Q_PROPERTY(QString former MEMBER former FINAL)
    Q_PROPERTY(int turns MEMBER turns FINAL)
    Q_PROPERTY(bool isDigit MEMBER isDigit FINAL)

  public:
    int id = 0; ///< its place from the right, from 0: the seconds keep theirs when the hours go
    QString text;
    QString former; ///< what was there before
    int turns = 0;  ///< how often that has changed
    bool isDigit = false;

    bool operator==(const RollingPiece&) const = default;
};

class RollingPresenter : public veslora::Presenter {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("one of its kinds is made")
    Q_PROPERTY(QString text READ text NOTIFY changed FINAL)
    /// All of `text`, from its left.
    Q_PROPERTY(QAbstractItemModel* pieces READ pieces CONSTANT FINAL)

  public:
    using Presenter::Presenter;

    [[nodiscard]] QString text() const { return m_text; }
    [[nodiscard]] QAbstractItemModel* pieces() { return &m_pieces; }

  protected:
    void start() override {}
    void read() override;
    /// What is to be shown now.
    [[nodiscard]] virtual QString wanted() const = 0;

  private:
    [[nodiscard]] RollingPiece pieceAt(int place, QChar character) const;

    QString m_text;
    RowModel<RollingPiece> m_pieces{"piece"};
};

/// A time left.
class RollingTimePresenter : public veslora::RollingPresenter {
    Q_OBJECT
    QML_ELEMENT
    /// Seconds.
    Q_PROPERTY(double remaining MEMBER m_remaining WRITE setRemaining REQUIRED FINAL)

  public:
    using RollingPresenter::RollingPresenter;

    void setRemaining(double remaining);

  protected:
    [[nodiscard]] QString wanted() const override;

  private:
    double m_remaining = 0;
};

/// A whole number.
class RollingNumberPresenter : public veslora::RollingPresenter {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(int number MEMBER m_number WRITE setNumber REQUIRED FINAL)

  public:
    using RollingPresenter::RollingPresenter;

    void setNumber(int number);

  protected:
    [[nodiscard]] QString wanted() const override;

  private:
    int m_number = 0;
};

} // namespace veslora
