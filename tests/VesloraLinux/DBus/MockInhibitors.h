// SPDX-License-Identifier: MIT
// The services that keep a machine awake, as desktops have them, on a bus of the test's own. Each writes down
// what is asked of it and can refuse, hesitate, go and come back.
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QObject>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <map>
#include <string>
#include <vector>

namespace veslora::testing {

class MockService : public QObject, protected QDBusContext {
    Q_OBJECT

  public:
    MockService(QString name, QString path) : m_name(std::move(name)), m_path(std::move(path)) {}

    void comeTo(QDBusConnection bus) {
        bus.registerObject(m_path, this, QDBusConnection::ExportAllSlots);
        bus.registerService(m_name);
    }
    void leave(QDBusConnection bus) {
        bus.unregisterService(m_name);
        bus.unregisterObject(m_path);
    }

    /// Answers what it was silent about so far.
    void answerAll() {
        hesitates = false;
        for (const auto& [call, bus] : std::exchange(m_unanswered, {})) {
            bus.send(call.createReply(grant()));
        }
    }

    void forgetUnanswered() { m_unanswered.clear(); }

    bool refuses = false;
    bool hesitates = false;
    int asked = 0;
    std::vector<std::string> log; ///< requests as they came, and "release" with the number

  protected:
    /// What a request gets; an invalid one where it gets nothing now.
    QVariant respond(const std::string& request) {
        ++asked;
        log.push_back(request);
        if (hesitates) {
            setDelayedReply(true);
            m_unanswered.emplace_back(message(), connection());
            return {};
        }
        if (refuses) {
            sendErrorReply(QDBusError::AccessDenied, QStringLiteral("no"));
            return {};
        }
        return grant();
    }
    virtual QVariant grant() = 0;

  private:
    QString m_name;
    QString m_path;
    std::vector<std::pair<QDBusMessage, QDBusConnection>> m_unanswered;
};

/// One that gives numbers.
class MockCookies : public MockService {
    Q_OBJECT

  public:
    using MockService::MockService;

    [[nodiscard]] std::size_t held() const { return m_held.size(); }
    /// The reason, or the flags, of all that is held.
    [[nodiscard]] std::vector<std::string> heldTexts() const {
        std::vector<std::string> texts;
        for (const auto& [number, text] : m_held) {
            texts.push_back(text);
        }
        return texts;
    }
    quint32 nextNumber = 1;

  protected:
    QVariant take(const QString& text) {
        m_text = text.toStdString();
        return respond(m_text);
    }
    void giveBack(quint32 number) {
        log.push_back("release " + std::to_string(number));
        m_held.erase(number);
    }
    QVariant grant() override {
        m_held[nextNumber] = m_text;
        return nextNumber++;
    }

  private:
    std::string m_text;
    std::map<quint32, std::string> m_held;
};

class MockSessionManager final : public MockCookies {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.SessionManager")

  public:
    MockSessionManager()
        : MockCookies(QStringLiteral("org.gnome.SessionManager"),
                      QStringLiteral("/org/gnome/SessionManager")) {}

  public slots:
    quint32 Inhibit(const QString& application, quint32 window, const QString& reason, quint32 flags) {
        return take(QStringLiteral("%1 %2 %3 %4").arg(application).arg(window).arg(flags).arg(reason))
            .toUInt();
    }
    void Uninhibit(quint32 number) { giveBack(number); }
};

class MockPowerManagement final : public MockCookies {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.PowerManagement.Inhibit")

  public:
    MockPowerManagement()
        : MockCookies(QStringLiteral("org.freedesktop.PowerManagement"),
                      QStringLiteral("/org/freedesktop/PowerManagement/Inhibit")) {}

  public slots:
    quint32 Inhibit(const QString& application, const QString& reason) {
        return take(application + ' ' + reason).toUInt();
    }
    void UnInhibit(quint32 number) { giveBack(number); }
};

class MockScreenSaver final : public MockCookies {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

  public:
    MockScreenSaver()
        : MockCookies(QStringLiteral("org.freedesktop.ScreenSaver"),
                      QStringLiteral("/org/freedesktop/ScreenSaver")) {}

  public slots:
    quint32 Inhibit(const QString& application, const QString& reason) {
        return take(application + ' ' + reason).toUInt();
    }
    void UnInhibit(quint32 number) { giveBack(number); }
};

/// Gives the writing end of a pipe, and knows by the reading end whether anybody still has it.
class MockLoginManager final : public MockService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.login1.Manager")

  public:
    MockLoginManager()
        : MockService(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1")) {}
    MockLoginManager(const MockLoginManager&) = delete;
    MockLoginManager& operator=(const MockLoginManager&) = delete;
    ~MockLoginManager() override {
        for (const int end : m_readingEnds) {
            close(end);
        }
    }

    /// How many of the descriptors are still open somewhere.
    [[nodiscard]] int held() const {
        int count = 0;
        for (const int end : m_readingEnds) {
            pollfd state{end, 0, 0};
            poll(&state, 1, 0);
            count += (state.revents & POLLHUP) == 0 ? 1 : 0;
        }
        return count;
    }

  public slots:
    QDBusUnixFileDescriptor Inhibit(const QString& what, const QString& who, const QString& why,
                                    const QString& mode) {
        return respond((what + ' ' + who + ' ' + mode + ' ' + why).toStdString())
            .value<QDBusUnixFileDescriptor>();
    }

  protected:
    QVariant grant() override {
        int ends[2] = {-1, -1};
        if (pipe2(ends, O_CLOEXEC) != 0) {
            return {};
        }
        m_readingEnds.push_back(ends[0]);
        QDBusUnixFileDescriptor descriptor;
        descriptor.giveFileDescriptor(ends[1]);
        return QVariant::fromValue(descriptor);
    }

  private:
    std::vector<int> m_readingEnds;
};

} // namespace veslora::testing
