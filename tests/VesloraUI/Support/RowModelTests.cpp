// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Views/ClaudeSessionRow.h"
#include "VesloraUI/Support/RowModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace veslora {
namespace {

ClaudeSessionRow row(const QString& id, const QString& name = {}) {
    ClaudeSessionRow made;
    made.id = id;
    made.name = name;
    return made;
}

class RowModelTest : public testing::Test {
  protected:
    RowModelTest() {
        QObject::connect(&model, &QAbstractItemModel::rowsInserted, [this] { ++inserted; });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved, [this] { ++removed; });
        QObject::connect(&model, &QAbstractItemModel::rowsMoved, [this] { ++moved; });
        QObject::connect(&model, &QAbstractItemModel::dataChanged, [this] { ++updated; });
        QObject::connect(&model, &QAbstractItemModel::modelReset, [this] { ++resets; });
    }

    RowModel<ClaudeSessionRow> model{"session"};
    int inserted = 0;
    int removed = 0;
    int moved = 0;
    int updated = 0;
    int resets = 0;
};

TEST_F(RowModelTest, AnEqualListSignalsNothing) {
    model.assign({row("a"), row("b")});
    inserted = 0;
    model.assign({row("a"), row("b")});
    EXPECT_EQ(inserted + removed + moved + updated + resets, 0);
}

TEST_F(RowModelTest, ARowThatChangesIsUpdatedInPlace) {
    model.assign({row("a"), row("b")});
    model.assign({row("a", "new"), row("b")});
    EXPECT_EQ(updated, 1);
    EXPECT_EQ(moved + removed, 0);
    EXPECT_EQ(model.rows()[0].name, "new");
}

TEST_F(RowModelTest, ARowThatMovesIsMoved) {
    model.assign({row("a"), row("b"), row("c")});
    model.assign({row("c"), row("a"), row("b")});
    EXPECT_EQ(moved, 1);
    EXPECT_EQ(removed + updated, 0);
}

TEST_F(RowModelTest, EverySequenceEndsAtTheGivenListAndNeverResets) {
    std::mt19937 random(7);
    for (int round = 0; round < 500; ++round) {
        std::vector<ClaudeSessionRow> rows;
        for (char id = 'a'; id < 'h'; ++id) {
            if (random() % 2 == 0) {
                rows.push_back(row(QChar(id), QString::number(random() % 3)));
            }
        }
        std::shuffle(rows.begin(), rows.end(), random);
        model.assign(rows);
        ASSERT_EQ(model.rows(), rows);
        ASSERT_EQ(model.rowCount(), static_cast<int>(rows.size()));
    }
    EXPECT_EQ(resets, 0);
}

} // namespace
} // namespace veslora
