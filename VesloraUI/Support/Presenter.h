// SPDX-License-Identifier: MIT
// What every presenter has in common: an object in a view that turns what models say into values ready for
// display. It starts once the view has given it all it needs, reads its models then and after every change,
// and tells of everything that it shows by one signal. Main thread only.
#pragma once

#include "VesloraUI/Platform/Observable.h"
#include "VesloraUI/Style/ViewEnvironment.h"

#include <QObject>
#include <QQmlEngine>
#include <QQmlParserStatus>

#include <utility>

namespace veslora {

class Presenter : public QObject, public QQmlParserStatus {
    Q_OBJECT
    QML_ANONYMOUS
    Q_INTERFACES(QQmlParserStatus)

  public:
    using QObject::QObject;

    void classBegin() final {}
    void componentComplete() final;

  signals:
    /// Something that is shown differs now.
    void changed();

  protected:
    /// Connects to the models. Called once, when every required property is there.
    virtual void start() = 0;
    /// Takes in what the models say now. Never called before `start`.
    virtual void read() = 0;

    /// Reads, unless it is too early for that: for a property that has changed.
    void refresh();
    /// Reads after each of these signals of a model.
    template <class Model, class... Signals>
    void follow(const Model* model, Signals... signalsOfIt) {
        (connect(model, signalsOfIt, this, &Presenter::refresh), ...);
    }
    /// Puts what is to be shown in place of what was, and tells of it if it differs. True when it did.
    template <class Shown>
    bool show(Shown& shown, Shown next) {
        return assign(this, shown, std::move(next), &Presenter::changed);
    }
    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    /// Only of a presenter that an engine made.
    [[nodiscard]] ViewEnvironment& environment() const { return ViewEnvironment::of(qmlEngine(this)); }

  private:
    bool m_isComplete = false;
};

} // namespace veslora
