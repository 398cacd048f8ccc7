// SPDX-License-Identifier: MIT
// The window for updates, drawn and pressed.
#include "VesloraUI/Style/Views.h"
#include "VesloraUI/Updates/UpdatePresenter.h"
#include "VesloraUI/Updates/UpdateWindow.h"
#include "tests/VesloraUI/Fixtures/Scene.h"
#include "tests/VesloraUI/Updates/UpdateParts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace veslora {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

class UpdateWindowTest : public ::testing::Test {
  protected:
    /// The window as it is made, kept where the scene finds what is in it.
    void open() {
        auto view = createView(scene.engine, "Updates/UpdateView.qml",
                               {{"updater", QVariant::fromValue(parts.updates.get())}});
        scene.showWindow(std::unique_ptr<QQuickWindow>(qobject_cast<QQuickWindow*>(view.release())));
    }
    /// To the system's installer.
    void handOver() {
        parts.updates->install();
        parts.answer(PackageReady{});
        parts.answer(PackageReady{});
    }
    /// What it says once things have come to rest.
    [[nodiscard]] QStringList texts() {
        scene.advance(0);
        return scene.texts();
    }
    /// How it says why something failed.
    [[nodiscard]] QString reasonOf(UpdateFailure failure) {
        parts.updates->checkForUpdates();
        parts.answer(failure);
        return texts().value(1);
    }

    void TearDown() override { scene.close(); }

    Scene scene;
    UpdateParts parts{scene.platform, scene.settings};
};

TEST_F(UpdateWindowTest, OffersAVersionWithItsNotes) {
    parts.offer("0.2.0", "Quieter.\nFaster, too.");
    open();
    EXPECT_THAT(texts(),
                ElementsAre("Veslora 0.2.0 is available", "You have 0.1.0.", "Quieter.\nFaster, too.",
                            "Skip This Version", "Later", "Install Update"));
    EXPECT_EQ(scene.window().width(), 460);
}

TEST_F(UpdateWindowTest, NotesAreTextAndNothingElse) {
    const std::string notes = "<b>bold</b> <img src='https://example.org/x.png'>\n\xe2\x80\xae"
                              "reversed\xe2\x80\xac\n\xe2\x80\x8b\tx\r\n";
    EXPECT_EQ(UpdatePresenter::harmless(notes).toStdString(),
              "<b>bold</b> <img src='https://example.org/x.png'>\n⟨U+202E⟩reversed⟨U+202C⟩\n⟨U+200B⟩ ⇥ x ␍ ");
    parts.offer("0.2.0", notes);
    open();
    const auto* const shown = scene.itemWith("text", UpdatePresenter::harmless(notes));
    ASSERT_TRUE(shown);
    EXPECT_EQ(shown->property("textFormat").toInt(), static_cast<int>(Qt::PlainText));
}

TEST_F(UpdateWindowTest, LongNotesScrollAndLeaveTheKeysInSight) {
    std::string notes;
    for (int line = 0; line < 200; ++line) {
        notes += "A line of the notes\n";
    }
    parts.offer("0.2.0", notes);
    open();
    scene.advance(0);
    EXPECT_LT(scene.window().height(), 450);
    EXPECT_LT(scene.centerOf("Install Update").y(), scene.window().height());
    EXPECT_TRUE(scene.shows("Scroll"));
}

TEST_F(UpdateWindowTest, WithoutNotesThereIsNoEmptyBox) {
    parts.offer("0.2.0", "");
    open();
    EXPECT_THAT(texts(), ElementsAre("Veslora 0.2.0 is available", "You have 0.1.0.", "Skip This Version",
                                     "Later", "Install Update"));
    EXPECT_LT(scene.window().height(), 130);
}

TEST_F(UpdateWindowTest, InstallsWithABarAndTellsWhatCameOfIt) {
    parts.offer("0.2.0");
    open();
    scene.press("Install Update");
    EXPECT_THAT(texts(), ElementsAre("Downloading Veslora 0.2.0…", "Quieter.", "Cancel"));
    ASSERT_FALSE(
        scene.platform.disk.write(std::string(UpdateParts::package) + ".part", std::string(420, 'x'), {}));
    scene.advance(0.25);
    EXPECT_TRUE(scene.shows("42 %"));
    parts.answer(PackageReady{});
    EXPECT_THAT(texts(), ElementsAre("Installing Veslora 0.2.0…", "Your system may ask for a password.",
                                     "Quieter.", "Close"));
    parts.answer(PackageReady{});
    scene.platform.installer.end(InstallOutcome::installed);
    EXPECT_THAT(texts(),
                ElementsAre("Veslora 0.2.0 is installed.",
                            "It takes over once this window is closed and nothing is going on.", "Close"));
}

TEST_F(UpdateWindowTest, ADownloadIsCancelled) {
    parts.offer("0.2.0");
    open();
    scene.press("Install Update");
    scene.advance(0);
    scene.press("Cancel");
    EXPECT_THAT(texts(), Contains("Veslora 0.2.0 is available"));
    EXPECT_TRUE(scene.platform.installer.paths.empty());
}

TEST_F(UpdateWindowTest, SkipsAndPutsOff) {
    parts.offer("0.2.0");
    open();
    scene.press("Skip This Version");
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::updateSkipped), "0.2.0");
    EXPECT_EQ(parts.step(), AppcastUpdater::Step::none);
    parts.offer("0.2.1");
    scene.advance(0);
    scene.press("Later");
    EXPECT_EQ(scene.settings.stringValue(SettingsKeys::updateSkipped), "0.2.0");
    EXPECT_EQ(parts.step(), AppcastUpdater::Step::none);
}

TEST_F(UpdateWindowTest, GivesTheCommandWhereNobodyInstalls) {
    parts.offer("0.2.0");
    open();
    const QString command = "sudo apt install '/home/me/.cache/Veslora/updates/veslora_0.2.0_amd64.deb'";
    const std::vector<std::pair<InstallOutcome, QString>> reasons{
        {InstallOutcome::absent, "This system has no installer that Veslora can ask. In a terminal, type:"},
        {InstallOutcome::forbidden,
         "The system's installer doesn't allow it. In a terminal, an administrator may type:"},
        {InstallOutcome::busy, "The system's installer is busy. Later, in a terminal, type:"},
        {InstallOutcome::failed, "The system's installer couldn't do it. In a terminal, type:"}};
    for (const auto& [outcome, reason] : reasons) {
        parts.offer("0.2.0");
        handOver();
        scene.platform.installer.end(outcome);
        EXPECT_THAT(texts(), ElementsAre("Veslora 0.2.0 can be installed by hand.", reason, command,
                                         "Copy Command", "Close"));
    }
    scene.press("Copy Command");
    EXPECT_EQ(QGuiApplication::clipboard()->text(), command);
}

TEST_F(UpdateWindowTest, GivesTheCommandWhereTheInstallerHangs) {
    parts.offer("0.2.0");
    open();
    handOver();
    scene.advance(AppcastUpdater::overdueAfter);
    EXPECT_THAT(
        texts(),
        ElementsAre("Installing Veslora 0.2.0…",
                    "The system's installer is taking long. If nothing comes of it, in a terminal, type:",
                    "Quieter.", "sudo apt install '/home/me/.cache/Veslora/updates/veslora_0.2.0_amd64.deb'",
                    "Copy Command", "Close"));
}

TEST_F(UpdateWindowTest, AnInstallationThatWasDismissedComesBackAsItIs) {
    const UpdateWindow window(scene.engine, *parts.updates);
    parts.offer("0.2.0");
    handOver();
    ASSERT_TRUE(window.window());
    window.window()->close();
    EXPECT_EQ(window.window(), nullptr);
    parts.updates->checkForUpdates();
    ASSERT_TRUE(window.window());
    EXPECT_EQ(parts.step(), AppcastUpdater::Step::installing);
    window.window()->close();
    scene.platform.installer.end(InstallOutcome::installed);
    EXPECT_TRUE(window.window()) << "its end is told";
}

TEST_F(UpdateWindowTest, SaysWhatCameOfACheck) {
    parts.updates->checkForUpdates();
    open();
    EXPECT_THAT(texts(), ElementsAre("Looking for updates…", "Cancel"));
    parts.answer(NothingNewer{});
    EXPECT_THAT(texts(), ElementsAre("Veslora is up to date.", "You have 0.1.0.", "Close"));
    QStringList reasons;
    for (int place = 0; place <= static_cast<int>(UpdateFailure::helper); ++place) {
        reasons << reasonOf(static_cast<UpdateFailure>(place));
        EXPECT_THAT(texts(), Contains("The update failed."));
    }
    EXPECT_EQ(reasons.removeDuplicates(), 0) << "each failure has a sentence of its own";
    EXPECT_EQ(reasons.removeAll(QString()), 0);
}

TEST_F(UpdateWindowTest, EveryKeyIsReachedByTab) {
    parts.offer("0.2.0");
    open();
    scene.window().requestActivate();
    scene.advance(0);
    QStringList reached;
    for (int step = 0; step < 3; ++step) {
        QTest::keyClick(&scene.window(), Qt::Key_Tab);
        scene.advance(0);
        reached << scene.window().activeFocusItem()->property("text").toString();
    }
    EXPECT_THAT(reached, ElementsAre("Skip This Version", "Later", "Install Update"));
}

TEST_F(UpdateWindowTest, NothingIsPressedByWhoTypesElsewhere) {
    parts.offer("0.2.0");
    open();
    scene.window().requestActivate();
    scene.advance(0);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Y}) {
        QTest::keyClick(&scene.window(), key);
    }
    EXPECT_EQ(parts.step(), AppcastUpdater::Step::offered);
}

TEST_F(UpdateWindowTest, OpensWithoutTheFocusAndGoesWhenItIsClosed) {
    const UpdateWindow window(scene.engine, *parts.updates);
    const QSignalSpy closed(&window, &UpdateWindow::closed);
    parts.updates->start();
    scene.platform.advance(120);
    EXPECT_EQ(window.window(), nullptr) << "a check by itself shows nothing";
    parts.answer(UpdateParts::item("0.2.0"));
    ASSERT_TRUE(window.window());
    EXPECT_TRUE(window.window()->property("_q_showWithoutActivating").toBool());
    EXPECT_FALSE(window.window()->isActive());
    window.window()->close();
    EXPECT_EQ(window.window(), nullptr);
    EXPECT_EQ(parts.step(), AppcastUpdater::Step::none);
    parts.updates->checkForUpdates();
    ASSERT_TRUE(window.window());
    EXPECT_FALSE(window.window()->property("_q_showWithoutActivating").toBool()) << "the user asked for it";
    parts.answer(UpdateParts::item("0.2.0"));
    parts.updates->skip();
    EXPECT_EQ(window.window(), nullptr);
    EXPECT_EQ(closed.count(), 0) << "what it was made of is still there";
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(closed.count(), 2);
}

TEST_F(UpdateWindowTest, ThePresenterOutlivesNoMoreThanItsWindow) {
    auto window = std::make_unique<UpdateWindow>(scene.engine, *parts.updates);
    parts.offer("0.2.0");
    ASSERT_TRUE(window->window());
    window.reset();
    EXPECT_EQ(parts.step(), AppcastUpdater::Step::offered) << "the end of the program dismisses nothing";
}

} // namespace
} // namespace veslora
