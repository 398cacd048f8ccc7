// SPDX-License-Identifier: MIT
// The window for updates in other languages: that every text of it is translated and has room.
#include "VesloraUI/Style/Views.h"
#include "VesloraUI/Support/Translations.h"
#include "tests/VesloraUI/Fixtures/Scene.h"
#include "tests/VesloraUI/Fixtures/SpokenTexts.h"
#include "tests/VesloraUI/Updates/UpdateParts.h"

#include <gtest/gtest.h>

#include <functional>

namespace veslora {
namespace {

/// The window at each thing that it can show; its notes are no text of ours.
class UpdateLanguage : public testing::Test {
  protected:
    void atEachStep(const std::function<void(const std::string&)>& look) {
        auto view = createView(scene.engine, "Updates/UpdateView.qml",
                               {{"updater", QVariant::fromValue(parts.updates.get())}});
        const auto looked = [&](const std::string& when) {
            scene.advance(0);
            look(when);
        };
        parts.updates->checkForUpdates();
        scene.showWindow(std::unique_ptr<QQuickWindow>(qobject_cast<QQuickWindow*>(view.release())));
        looked("checking");
        parts.answer(NothingNewer{});
        looked("up to date");
        for (int place = 0; place <= static_cast<int>(UpdateFailure::helper); ++place) {
            parts.updates->checkForUpdates();
            parts.answer(static_cast<UpdateFailure>(place));
            looked("failure " + std::to_string(place));
        }
        for (const auto outcome : {InstallOutcome::installed, InstallOutcome::absent,
                                   InstallOutcome::forbidden, InstallOutcome::busy, InstallOutcome::failed}) {
            parts.offer("0.2.0", "Αβγ");
            looked("offered");
            parts.updates->install();
            looked("downloading");
            parts.answer(PackageReady{});
            looked("installing");
            parts.answer(PackageReady{});
            scene.advance(AppcastUpdater::overdueAfter);
            looked("taking long");
            scene.platform.installer.end(outcome);
            looked("outcome " + std::to_string(static_cast<int>(outcome)));
        }
    }

    /// Each text is whole, and nothing lies on anything else or beyond the window.
    void expectRoom(const std::string& when) {
        const QRectF window(QPointF(), scene.window().size());
        QRectF row;
        for (const QString& text : scene.texts()) {
            const QQuickItem* const item = scene.itemWith("text", text);
            ASSERT_TRUE(item) << when << ": " << text.toStdString();
            const QRectF place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
            EXPECT_TRUE(window.contains(place)) << when << ": " << text.toStdString();
            EXPECT_FALSE(item->property("truncated").toBool()) << when << ": " << text.toStdString();
            EXPECT_LE(item->property("contentWidth").toDouble(), item->width() + 0.5)
                << when << ": " << text.toStdString();
            EXPECT_FALSE(row.intersects(place)) << when << ": " << text.toStdString();
            row = place;
        }
    }

    void TearDown() override { scene.close(); }

    Scene scene;
    UpdateParts parts{scene.platform, scene.settings};
};

using UpdatesInPseudo = UpdateLanguage;
using UpdatesInGerman = UpdateLanguage;

TEST_F(UpdatesInPseudo, EveryTextIsTranslated) {
    const PseudoTexts pseudo;
    atEachStep([this](const std::string& when) {
        // A command is the same in every language.
        if (!scene.texts().join(u' ').contains("sudo")) {
            SpokenTexts(scene).expectTranslated(when);
        }
    });
    const CatalogFile catalog("de");
    for (const auto& [context, source] : pseudo.asked()) {
        EXPECT_TRUE(catalog.has(context, source)) << context.toStdString() << ": " << source.toStdString();
    }
}

TEST_F(UpdatesInGerman, EveryTextHasRoomAtEverySize) {
    Translations german({"de"});
    german.install();
    bool isGerman = false;
    for (const double scale : {1.0, 1.25, 1.5, 1.75, 2.0}) {
        scene.platform.look.change({.isTold = true, .textScale = scale});
        atEachStep([&](const std::string& when) {
            expectRoom(when + " at " + std::to_string(scale));
            isGerman = isGerman || scene.texts().contains("Später");
        });
        scene.close();
        parts.updates->dismiss();
    }
    EXPECT_TRUE(isGerman);
}

} // namespace
} // namespace veslora
