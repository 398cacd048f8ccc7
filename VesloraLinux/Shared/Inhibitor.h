// SPDX-License-Identifier: MIT
// One of the ways in which a desktop can be asked to stay awake. Main thread only.
#pragma once

#include <QObject>
#include <QString>

#include <functional>
#include <memory>

namespace veslora {

/// What the machine is to be kept from.
struct AwakeNeeds {
    bool system = false;  ///< from idling to sleep
    bool display = false; ///< from dimming and blanking the screen

    [[nodiscard]] bool any() const { return system || display; }
    /// What is in both.
    [[nodiscard]] AwakeNeeds operator&(const AwakeNeeds& other) const {
        return {system && other.system, display && other.display};
    }
    /// What is in this but not in the other.
    [[nodiscard]] AwakeNeeds without(const AwakeNeeds& other) const {
        return {system && !other.system, display && !other.display};
    }
    bool operator==(const AwakeNeeds&) const = default;
};

/// Something that was granted. It ends when this goes, and also when the program does, however that ends.
class Inhibition {
  public:
    virtual ~Inhibition() = default;
};

class Inhibitor : public QObject {
    Q_OBJECT

  public:
    /// Gets what was granted, or null where it was refused. Dropping it lets go at once, so that a request
    /// that nobody wants any more need not be cancelled, which would lose what it grants.
    using Done = std::function<void(std::unique_ptr<Inhibition>)>;

    /// By which a log tells it apart.
    [[nodiscard]] virtual QString name() const = 0;

    /// What it can serve.
    [[nodiscard]] virtual AwakeNeeds covers() const = 0;

    /// Asks for `needs`, a part of what it covers. `reason` is for the user to read. `done` is called once:
    /// within this call where the answer is known, and otherwise whenever it comes; never when it comes after
    /// this object is gone.
    virtual void inhibit(AwakeNeeds needs, const QString& reason, Done done) = 0;

  signals:
    /// The service behind this has come, gone or been replaced by another: what it granted is worth nothing
    /// now.
    void ownerChanged();
};

} // namespace veslora
