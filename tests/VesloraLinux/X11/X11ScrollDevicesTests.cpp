// SPDX-License-Identifier: MIT
// Drivers' properties on the devices of a server that has none of theirs.
#include "VesloraLinux/X11/X11ScrollDevices.h"
#include "tests/VesloraLinux/Support/PanelDesktop.h"

#include <QPointingDevice>
#include <QQuickItem>
#include <QWheelEvent>

#include <gtest/gtest.h>
#include <xcb/xinput.h>

#include <optional>

namespace veslora {
namespace {

using testing::Desktop;
using testing::PanelDesktop;
using testing::waitUntil;
using Bytes = std::vector<std::uint8_t>;

class X11ScrollDevicesTests : public ::testing::Test {
  protected:
    void give(const std::string& property, const Bytes& values) {
        auto& connection = desktop.connection();
        xcb_input_xi_change_property(connection.xcb(), number, XCB_PROP_MODE_REPLACE, 8,
                                     connection.atom(property), XCB_ATOM_INTEGER,
                                     static_cast<std::uint32_t>(values.size()), values.data());
    }
    /// As a new device is judged.
    [[nodiscard]] ScrollSource judged() {
        const QPointingDevice device(QStringLiteral("device"), number, QInputDevice::DeviceType::Mouse,
                                     QPointingDevice::PointerType::Generic, QInputDevice::Capability::Scroll,
                                     1, 3);
        return devices.sourceOf(device);
    }

    Desktop desktop{{.hasWindowManager = false}};
    X11ScrollDevices devices{desktop.connection()};
    std::uint16_t number = [] {
        for (const QInputDevice* device : QInputDevice::devices()) {
            if (device->name() == QStringLiteral("Xvfb mouse")) {
                return static_cast<std::uint16_t>(device->systemId());
            }
        }
        ADD_FAILURE() << "the server has no mouse";
        return std::uint16_t{0};
    }();
};

TEST_F(X11ScrollDevicesTests, OfADeviceThatNoKnownDriverHasNothingIsKnown) {
    EXPECT_EQ(judged(), ScrollSource::unknown);
    number = 4321;
    EXPECT_EQ(judged(), ScrollSource::unknown) << "there is none of that number";
}

TEST_F(X11ScrollDevicesTests, WhatCanBeTappedIsATouchpad) {
    give("libinput Send Events Modes Available", {1, 1});
    give("libinput Tapping Enabled", {0});
    EXPECT_EQ(judged(), ScrollSource::fingers);
}

TEST_F(X11ScrollDevicesTests, WhatSynapticsDrivesIsATouchpad) {
    give("Synaptics Off", {0});
    EXPECT_EQ(judged(), ScrollSource::fingers);
}

TEST_F(X11ScrollDevicesTests, TheWaysToScrollTellFingersFromAWheel) {
    give("libinput Send Events Modes Available", {1, 0});
    EXPECT_EQ(judged(), ScrollSource::wheel);
    give("libinput Scroll Methods Available", {1, 1, 0});
    EXPECT_EQ(judged(), ScrollSource::fingers);
    give("libinput Scroll Methods Available", {0, 1, 0});
    EXPECT_EQ(judged(), ScrollSource::fingers) << "along its edge";
    give("libinput Scroll Methods Available", {0, 0, 1});
    give("libinput Scroll Method Enabled", {0, 0, 0});
    EXPECT_EQ(judged(), ScrollSource::wheel);
    give("libinput Scroll Method Enabled", {0, 0, 1});
    EXPECT_EQ(judged(), ScrollSource::unknown) << "by its own movement, and perhaps by a wheel";
}

TEST_F(X11ScrollDevicesTests, PropertiesOfAnotherFormTellNothing) {
    give("libinput Send Events Modes Available", {1, 0});
    give("libinput Scroll Methods Available", {});
    EXPECT_EQ(judged(), ScrollSource::wheel);
    give("libinput Scroll Methods Available", Bytes(400, 0));
    EXPECT_EQ(judged(), ScrollSource::wheel);
}

TEST_F(X11ScrollDevicesTests, ADeviceIsAskedAboutOnceAndForgottenWhenItGoes) {
    std::optional<QPointingDevice> device;
    const auto plugIn = [&] {
        device.emplace(QStringLiteral("device"), number, QInputDevice::DeviceType::Mouse,
                       QPointingDevice::PointerType::Generic, QInputDevice::Capability::Scroll, 1, 3);
    };
    plugIn();
    EXPECT_EQ(devices.sourceOf(*device), ScrollSource::unknown);
    give("Synaptics Off", {0});
    EXPECT_EQ(devices.sourceOf(*device), ScrollSource::unknown) << "nobody asked again";
    plugIn();
    EXPECT_EQ(devices.sourceOf(*device), ScrollSource::fingers) << "another one at the same address";
}

/// Remembers whom a wheel's events are of.
class WheelWitness : public QQuickItem {
  public:
    std::optional<QPoint> angle;
    QPoint pixels;
    std::uint64_t time = 0;
    const QPointingDevice* device = nullptr;

  protected:
    void wheelEvent(QWheelEvent* event) override {
        angle = event->angleDelta();
        pixels = event->pixelDelta();
        time = event->timestamp();
        device = event->pointingDevice();
    }
};

TEST(X11ScrollEventTests, TheToolkitNamesTheDeviceThatTheServerMeans) {
    PanelDesktop x;
    x.panel.setZones({{{x.frame.x, x.frame.y, x.frame.width, x.frame.height}}, {}});
    WheelWitness witness;
    witness.setParentItem(&x.island);
    witness.setSize({600, 200});
    x.show();
    x.desktop.movePointerTo(800, 20);
    x.desktop.click(7);
    ASSERT_TRUE(waitUntil([&] { return witness.angle.has_value(); }));
    EXPECT_EQ(*witness.angle, QPoint(-120, 0)) << "to the right";
    EXPECT_TRUE(witness.pixels.isNull());
    EXPECT_GT(witness.time, 0U);
    ASSERT_TRUE(witness.device);
    EXPECT_EQ(witness.device->name().toStdString(), "Virtual core XTEST pointer");
    EXPECT_EQ(witness.device->type(), QInputDevice::DeviceType::Mouse);
    X11ScrollDevices devices(x.desktop.connection());
    EXPECT_EQ(devices.sourceOf(*witness.device), ScrollSource::unknown);
    auto& connection = x.desktop.connection();
    const std::uint8_t off = 0;
    xcb_input_xi_change_property(connection.xcb(), static_cast<std::uint16_t>(witness.device->systemId()),
                                 XCB_PROP_MODE_REPLACE, 8, connection.atom("Synaptics Off"), XCB_ATOM_INTEGER,
                                 1, &off);
    X11ScrollDevices others(x.desktop.connection());
    EXPECT_EQ(others.sourceOf(*witness.device), ScrollSource::fingers);
    witness.setParentItem(nullptr);
}

} // namespace
} // namespace veslora
