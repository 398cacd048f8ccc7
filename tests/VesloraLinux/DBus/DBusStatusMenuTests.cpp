// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/DBusStatusMenu.h"
#include "tests/VesloraLinux/Support/PrivateBus.h"
#include "tests/VesloraLinux/Support/Waiting.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QImage>

#include <gtest/gtest.h>

namespace veslora {
namespace {

using testing::handleEventsFor;
using testing::waitUntil;

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");

/// The desktop's list of items, with or without a panel that shows them.
class MockWatcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

  public:
    explicit MockWatcher(bool startsWithHost) : hasHost(startsWithHost) {}

    void comeTo(QDBusConnection bus) {
        bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
                           QDBusConnection::ExportAllContents);
        bus.registerService(watcherName);
    }
    void leave(QDBusConnection bus) {
        bus.unregisterService(watcherName);
        bus.unregisterObject(QStringLiteral("/StatusNotifierWatcher"));
    }

    bool hasHost;
    QStringList items;

  public slots:
    void RegisterStatusNotifierItem(const QString& service) { items.append(service); }

  signals:
    void StatusNotifierHostRegistered();
};

/// The icon is painted, which needs a graphical application but no display.
class OffscreenApplication {
  private:
    int m_count = 3;
    char m_name[8] = "veslora";
    char m_option[10] = "-platform";
    char m_platform[10] = "offscreen";
    char* m_arguments[4] = {m_name, m_option, m_platform, nullptr};
    QGuiApplication m_application{m_count, m_arguments};
};

class DBusStatusMenuTests : public ::testing::Test {
  protected:
    void showMenu() {
        menu.show(QStringLiteral("Veslora"), QStringLiteral("rectangle.topthird.inset.filled"),
                  {{.text = QStringLiteral("Settings…"),
                    .shortcut = QStringLiteral("Ctrl+,"),
                    .isEnabled = true,
                    .activate = [this] { chosen += 's'; }},
                   {.text = QStringLiteral("Check_now"),
                    .shortcut = {},
                    .isEnabled = false,
                    .activate = [this] { chosen += 'c'; }},
                   {},
                   {.text = QStringLiteral("Quit Veslora"),
                    .shortcut = QStringLiteral("Ctrl+Shift+Q"),
                    .isEnabled = true,
                    .activate = [this] { chosen += 'q'; }}});
    }

    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(menu.service(), path, interface, method);
        message.setArguments(arguments);
        const QDBusPendingCall pending = panel.asyncCall(message);
        EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); }));
        return pending.reply();
    }
    QVariant property(const QString& name) {
        const auto reply =
            call(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.freedesktop.DBus.Properties"),
                 QStringLiteral("Get"), {QStringLiteral("org.kde.StatusNotifierItem"), name});
        return reply.arguments().value(0).value<QDBusVariant>().variant();
    }
    QDBusMessage callMenu(const QString& method, const QVariantList& arguments) {
        return call(QStringLiteral("/StatusMenu"), QStringLiteral("com.canonical.dbusmenu"), method,
                    arguments);
    }
    QList<MenuLayout> rows() {
        const auto reply = callMenu(QStringLiteral("GetLayout"), {0, -1, QStringList()});
        return qdbus_cast<MenuLayout>(reply.arguments().value(1).value<QDBusArgument>()).children;
    }
    void clickRow(int id) {
        callMenu(QStringLiteral("Event"),
                 {id, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())), 0U});
    }

    OffscreenApplication application;
    testing::PrivateBus bus;
    QDBusConnection panel = bus.connect();
    QDBusConnection own = bus.connect();
    MockWatcher watcher{true};
    DBusStatusMenu menu{own};
    std::string chosen;
};

TEST_F(DBusStatusMenuTests, RegistersWithAPanelThatIsThere) {
    watcher.comeTo(panel);
    showMenu();
    EXPECT_TRUE(waitUntil([&] { return watcher.items == QStringList{menu.service()}; }));
}

TEST_F(DBusStatusMenuTests, IsNotOnTheBusWhileThereIsNobodyToShowIt) {
    watcher.hasHost = false;
    watcher.comeTo(panel);
    showMenu();
    handleEventsFor(100);
    EXPECT_TRUE(watcher.items.isEmpty());
    EXPECT_EQ(property(QStringLiteral("Title")), QVariant());
    emit watcher.StatusNotifierHostRegistered();
    EXPECT_TRUE(waitUntil([&] { return watcher.items.size() == 1; }));
    EXPECT_EQ(property(QStringLiteral("Title")).toString(), QStringLiteral("Veslora"));
}

TEST_F(DBusStatusMenuTests, RegistersAgainWhenTheListOrThePanelComesBack) {
    showMenu();
    handleEventsFor(50);
    watcher.comeTo(panel);
    EXPECT_TRUE(waitUntil([&] { return watcher.items.size() == 1; }));
    watcher.leave(panel);
    watcher.comeTo(panel);
    EXPECT_TRUE(waitUntil([&] { return watcher.items.size() == 2; }));
    emit watcher.StatusNotifierHostRegistered();
    EXPECT_TRUE(waitUntil([&] { return watcher.items.size() == 3; }));
    EXPECT_EQ(watcher.items.count(menu.service()), 3);
}

TEST_F(DBusStatusMenuTests, GivesThePanelAnIconThatIsNotEmpty) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    const auto icons = qdbus_cast<StatusIcons>(property(QStringLiteral("IconPixmap")).value<QDBusArgument>());
    ASSERT_GE(icons.size(), 3);
    for (const StatusIcon& icon : icons) {
        ASSERT_EQ(icon.bytes.size(), icon.width * icon.height * 4);
        // A closed frame: clear in its corner and opaque grey in the bar below its upper edge.
        EXPECT_EQ(icon.bytes.at(0), 0);
        const int inBar = ((icon.height * 9 / 24) * icon.width + icon.width / 2) * 4;
        EXPECT_EQ(static_cast<uchar>(icon.bytes.at(inBar)), 255) << icon.width;
        EXPECT_EQ(static_cast<uchar>(icon.bytes.at(inBar + 1)), 0xa8);
    }
    EXPECT_EQ(property(QStringLiteral("Menu")).value<QDBusObjectPath>().path(),
              QStringLiteral("/StatusMenu"));
    EXPECT_EQ(property(QStringLiteral("Status")).toString(), QStringLiteral("Active"));
    EXPECT_EQ(property(QStringLiteral("ItemIsMenu")).toBool(), true);
    const auto tip = qdbus_cast<StatusToolTip>(property(QStringLiteral("ToolTip")).value<QDBusArgument>());
    EXPECT_EQ(tip.title, QStringLiteral("Veslora"));
}

TEST_F(DBusStatusMenuTests, DescribesRowsDividersShortcutsAndWhatIsOff) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    const auto layout = rows();
    ASSERT_EQ(layout.size(), 4);
    EXPECT_EQ(layout[0].properties.value(QStringLiteral("label")).toString(), QStringLiteral("Settings…"));
    EXPECT_EQ(layout[1].properties.value(QStringLiteral("label")).toString(), QStringLiteral("Check__now"));
    EXPECT_TRUE(layout[0].properties.value(QStringLiteral("enabled")).toBool());
    EXPECT_FALSE(layout[1].properties.value(QStringLiteral("enabled")).toBool());
    EXPECT_EQ(layout[2].properties.value(QStringLiteral("type")).toString(), QStringLiteral("separator"));
    const auto keys = [&](int row) {
        return qdbus_cast<QList<QStringList>>(
            layout[row].properties.value(QStringLiteral("shortcut")).value<QDBusArgument>());
    };
    EXPECT_EQ(keys(0), (QList<QStringList>{{QStringLiteral("Control"), QStringLiteral(",")}}));
    EXPECT_EQ(keys(3), (QList<QStringList>{
                           {QStringLiteral("Control"), QStringLiteral("Shift"), QStringLiteral("Q")}}));
    EXPECT_FALSE(layout[1].properties.contains(QStringLiteral("shortcut")));
}

TEST_F(DBusStatusMenuTests, RunsARowThatIsChosenAndNoneThatIsOffOrUnknown) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    for (const int id : {2, 3, 0, -1, 99, 4}) {
        clickRow(id);
    }
    EXPECT_TRUE(waitUntil([&] { return chosen == "q"; }));
    clickRow(1);
    EXPECT_TRUE(waitUntil([&] { return chosen == "qs"; }));
    callMenu(QStringLiteral("Event"),
             {1, QStringLiteral("hovered"), QVariant::fromValue(QDBusVariant(QString())), 0U});
    handleEventsFor(20);
    EXPECT_EQ(chosen, "qs");
}

TEST_F(DBusStatusMenuTests, TakesEventsInGroupsAndNamesTheUnknownOnes) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    const QDBusVariant nothing{QString()};
    const QList<MenuEvent> events{{4, QStringLiteral("clicked"), nothing, 0},
                                  {77, QStringLiteral("clicked"), nothing, 0}};
    const auto reply = callMenu(QStringLiteral("EventGroup"), {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(reply.arguments().value(0)), QList<int>{77});
    EXPECT_TRUE(waitUntil([&] { return chosen == "q"; }));
}

TEST_F(DBusStatusMenuTests, AnswersForSingleRowsAndProperties) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    const auto label = callMenu(QStringLiteral("GetProperty"), {4, QStringLiteral("label")});
    EXPECT_EQ(label.arguments().value(0).value<QDBusVariant>().variant().toString(),
              QStringLiteral("Quit Veslora"));
    const auto group =
        callMenu(QStringLiteral("GetGroupProperties"),
                 {QVariant::fromValue(QList<int>{1, 99}), QStringList{QStringLiteral("enabled")}});
    const auto properties =
        qdbus_cast<QList<MenuRowProperties>>(group.arguments().value(0).value<QDBusArgument>());
    ASSERT_EQ(properties.size(), 1);
    EXPECT_EQ(properties[0].properties.keys(), QStringList{QStringLiteral("enabled")});
    const auto shown = callMenu(QStringLiteral("AboutToShow"), {0});
    EXPECT_FALSE(shown.arguments().value(0).toBool());
    const auto groupShown =
        callMenu(QStringLiteral("AboutToShowGroup"), {QVariant::fromValue(QList<int>{0, 99})});
    EXPECT_EQ(qdbus_cast<QList<int>>(groupShown.arguments().value(1)), QList<int>{99});
}

TEST_F(DBusStatusMenuTests, AClickOnTheIconItselfStandsForTheFirstRow) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    call(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"),
         QStringLiteral("Activate"), {10, 10});
    EXPECT_TRUE(waitUntil([&] { return chosen == "s"; }));
}

TEST_F(DBusStatusMenuTests, TellsThePanelWhenTheRowsChange) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    const uint before =
        callMenu(QStringLiteral("GetLayout"), {0, 0, QStringList()}).arguments().value(0).toUInt();
    menu.show(QStringLiteral("Veslora"), QStringLiteral("rectangle.topthird.inset.filled"),
              {{.text = QStringLiteral("Only"), .shortcut = {}, .isEnabled = true, .activate = {}}});
    EXPECT_GT(callMenu(QStringLiteral("GetLayout"), {0, 0, QStringList()}).arguments().value(0).toUInt(),
              before);
    ASSERT_EQ(rows().size(), 1);
    EXPECT_EQ(watcher.items.size(), 1);
}

TEST_F(DBusStatusMenuTests, AChoiceOfARowThatWasReplacedDoesNothing) {
    watcher.comeTo(panel);
    showMenu();
    ASSERT_TRUE(waitUntil([&] { return !watcher.items.isEmpty(); }));
    menu.show(QStringLiteral("Veslora"), QStringLiteral("rectangle.topthird.inset.filled"),
              {{.text = QStringLiteral("Other"), .shortcut = {}, .isEnabled = true, .activate = [this] {
                    chosen += 'o';
                }}});
    for (const int id : {1, 2, 3, 4}) {
        clickRow(id);
    }
    handleEventsFor(20);
    EXPECT_EQ(chosen, "");
    ASSERT_EQ(rows().size(), 1);
    clickRow(rows()[0].id);
    EXPECT_TRUE(waitUntil([&] { return chosen == "o"; }));
    call(QStringLiteral("/StatusNotifierItem"), QStringLiteral("org.kde.StatusNotifierItem"),
         QStringLiteral("Activate"), {10, 10});
    EXPECT_TRUE(waitUntil([&] { return chosen == "oo"; }));
}

TEST_F(DBusStatusMenuTests, DoesNothingWithoutABus) {
    DBusStatusMenu alone{std::nullopt};
    alone.show(QStringLiteral("Veslora"), QStringLiteral("none"), {});
}

} // namespace
} // namespace veslora

#include "DBusStatusMenuTests.moc"
