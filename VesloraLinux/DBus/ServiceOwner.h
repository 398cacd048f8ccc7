// SPDX-License-Identifier: MIT
// Who owns a name on the bus, and questions to just that program. Nobody is made to start it; one that comes
// later, or again, is heard of from then on. Main thread only.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>

namespace veslora {

class ServiceOwner : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(ServiceOwner)

  public:
    /// `service` is the name; an answer may take as long as `limitMilliseconds`.
    ServiceOwner(std::optional<QDBusConnection> bus, QString service, int limitMilliseconds)
        : m_bus(std::move(bus)), m_service(std::move(service)), m_limit(limitMilliseconds) {}
    ~ServiceOwner() override = default;

    /// Begins to listen; never waits. Called once. Without a bus it is `missing` within this call.
    void follow();

    /// Its own name on the bus, by which nobody else's word is taken, and the toolkit need not ask whose the
    /// name is, for which it would wait. Empty while there is none.
    [[nodiscard]] const QString& name() const { return m_name; }

    /// Asks the owner, which there has to be. What it says counts for nothing once another is the owner:
    /// `answered` is then not called.
    void ask(const QString& path, const QString& interface, const QString& method,
             const QVariantList& arguments, std::function<void(const QDBusMessage& reply)> answered);

  signals:
    /// Another is the owner, or none, in place of the one named `before`, which may be empty.
    void changed(const QString& before);
    /// There was none at the first look. One may still come.
    void missing();

  private slots:
    void ownerChanged(const QString& name, const QString& before, const QString& after);

  private:
    void setName(const QString& name);
    void call(QDBusMessage message, std::function<void(const QDBusMessage& reply)> answered);

    std::optional<QDBusConnection> m_bus;
    QString m_service;
    int m_limit;
    QString m_name;
};

} // namespace veslora
