// SPDX-License-Identifier: MIT
#include "tests/support/FaultInjectingFiles.h"
#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>

using namespace veslora;

namespace {

class FaultInjectingFilesTest : public testing::Test {
  protected:
    MemoryFiles memory;
    FaultInjectingFiles files{memory};

    void SetUp() override { memory.put("/note", "12345"); }
};

} // namespace

TEST_F(FaultInjectingFilesTest, PassesEverythingThroughWhileNothingIsOrdered) {
    EXPECT_EQ(files.read("/note", {}).bytes, "12345");
    EXPECT_TRUE(files.stat("/note", Links::refuse));
    EXPECT_EQ(files.list("/")->size(), 1U);
    EXPECT_FALSE(files.write("/other", "x", {}));
    EXPECT_FALSE(files.makeDirectory("/folder", 0700));
    EXPECT_FALSE(files.makeLink("/note", "/link"));
    EXPECT_EQ(files.resolve("/link"), "/note");
    EXPECT_FALSE(files.setMode("/note", 0755));
    EXPECT_TRUE(files.isExecutable("/note"));
    EXPECT_FALSE(files.remove("/other"));
    EXPECT_EQ(files.operations(), 10);
}

TEST_F(FaultInjectingFilesTest, FailsTheOperationOfThatNumberOnce) {
    files.failOperation(2, std::errc::io_error);
    EXPECT_TRUE(files.read("/note", {}));
    EXPECT_EQ(files.write("/note", "new", {}), std::errc::io_error);
    EXPECT_EQ(memory.text("/note"), "12345");
    EXPECT_FALSE(files.write("/note", "new", {}));
}

TEST_F(FaultInjectingFilesTest, OperationWithoutAnErrorTellsThatNothingIsThere) {
    files.failOperation(1, std::errc::io_error);
    EXPECT_EQ(files.stat("/note", Links::refuse), std::nullopt);
    files.failOperation(1, std::errc::io_error);
    EXPECT_EQ(files.list("/"), std::nullopt);
    EXPECT_FALSE(files.makeLink("/note", "/link"));
    files.failOperation(1, std::errc::io_error);
    EXPECT_EQ(files.resolve("/link"), "/link");
    EXPECT_FALSE(files.setMode("/note", 0755));
    files.failOperation(1, std::errc::io_error);
    EXPECT_FALSE(files.isExecutable("/note"));
}

TEST_F(FaultInjectingFilesTest, FullDiskRefusesEverythingNewAndStillRemoves) {
    files.writeError = std::errc::no_space_on_device;
    EXPECT_EQ(files.write("/note", "new", {}), std::errc::no_space_on_device);
    EXPECT_EQ(files.makeDirectory("/folder", 0700), std::errc::no_space_on_device);
    EXPECT_EQ(files.makeLink("/note", "/link"), std::errc::no_space_on_device);
    EXPECT_EQ(files.read("/note", {}).bytes, "12345");
    EXPECT_FALSE(files.remove("/note"));
    files.writeError.reset();
    EXPECT_FALSE(files.write("/note", "new", {}));
}

TEST_F(FaultInjectingFilesTest, CutsReadsShort) {
    files.readLimit = 3;
    EXPECT_EQ(files.read("/note", {}).bytes, "123");
    files.readLimit = 0;
    EXPECT_TRUE(files.read("/note", {}));
    EXPECT_EQ(files.read("/note", {}).bytes, "");
}

TEST_F(FaultInjectingFilesTest, FailsReads) {
    files.readError = std::errc::io_error;
    EXPECT_EQ(files.read("/note", {}).error, std::errc::io_error);
    files.readError.reset();
    EXPECT_TRUE(files.read("/note", {}));
}

TEST_F(FaultInjectingFilesTest, FailsToOpen) {
    EXPECT_TRUE(files.open("/note"));
    files.readError = std::errc::io_error;
    EXPECT_FALSE(files.open("/note"));
    files.readError.reset();
    files.failOperation(1, std::errc::io_error);
    EXPECT_FALSE(files.open("/note"));
    EXPECT_TRUE(files.open("/note"));
}

TEST_F(FaultInjectingFilesTest, WhatGoesThroughAFolderFailsToo) {
    memory.put("/box/note", "12345");
    const OpenedFolder folder = files.openFolder("/box");
    ASSERT_TRUE(folder);
    files.writeError = std::errc::no_space_on_device;
    EXPECT_EQ(folder->write("note", "", {}), std::errc::no_space_on_device);
    EXPECT_EQ(folder->makeFolder("inner", 0700), std::errc::no_space_on_device);
    EXPECT_EQ(folder->makeLink("/note", "link"), std::errc::no_space_on_device);
    EXPECT_EQ(folder->read("note", {}).bytes, "12345");
    files.writeError.reset();
    files.readLimit = 3;
    EXPECT_EQ(folder->read("note", {}).bytes, "123");
    files.readError = std::errc::io_error;
    EXPECT_EQ(folder->read("note", {}).error, std::errc::io_error);
    EXPECT_FALSE(folder->open("note"));
    EXPECT_EQ(files.operations(), 8);
}

TEST_F(FaultInjectingFilesTest, AFolderInAFolderFailsToo) {
    memory.put("/box/inner/note", "12345");
    const OpenedFolder inner = files.openFolder("/box")->openFolder("inner");
    ASSERT_TRUE(inner);
    files.failOperation(1, std::errc::io_error);
    EXPECT_EQ(inner->remove("note"), std::errc::io_error);
    files.failOperation(1, std::errc::io_error);
    EXPECT_EQ(files.openFolder("/box").error, std::errc::io_error);
    EXPECT_EQ(memory.text("/box/inner/note"), "12345");
}
