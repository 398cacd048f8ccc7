// SPDX-License-Identifier: MIT
#include "VesloraLinux/DBus/PowerAssertions.h"

#include "VesloraUI/Platform/Logs.h"

#include <QCoreApplication>

#include <utility>

namespace veslora {
namespace {

AwakeNeeds needsOf(const std::optional<KeepAwakeHold>& hold) {
    return {.system = hold.has_value(), .display = hold && hold->display};
}

QString textOf(KeepAwakeHold::Reason reason) {
    return reason == KeepAwakeHold::Reason::claude
               ? QCoreApplication::translate("PowerAssertions", "Veslora: Claude Code is working")
               : QCoreApplication::translate("PowerAssertions", "Veslora: Keep Awake");
}

} // namespace

PowerAssertions::PowerAssertions(Scheduler& scheduler, std::vector<std::unique_ptr<Inhibitor>> ways)
    : m_scheduler(scheduler) {
    for (auto& inhibitor : ways) {
        if (inhibitor) {
            m_ways.push_back({.inhibitor = std::move(inhibitor), .inhibition = {}, .wait = {}});
        }
    }
    for (Way& way : m_ways) {
        QObject::connect(way.inhibitor.get(), &Inhibitor::ownerChanged, way.inhibitor.get(),
                         [this, &way] { ownerChanged(way); });
    }
}

PowerAssertions::~PowerAssertions() = default;

void PowerAssertions::apply(const std::optional<KeepAwakeHold>& hold) {
    qCInfo(Logs::power, "to be kept awake: %s",
           !hold           ? "nothing"
           : hold->display ? "machine and display"
                           : "machine");
    m_hold = hold;
    for (Way& way : m_ways) {
        forget(way);
    }
    walk();
}

/// Goes through the ways, each asked for what those before it do not serve, up to the one whose answer is
/// awaited. May be run again at any time; where nothing has changed it changes nothing.
void PowerAssertions::walk() {
    AwakeNeeds open = needsOf(m_hold);
    for (Way& way : m_ways) {
        const AwakeNeeds share = way.inhibitor->covers() & open;
        if (!share.any()) {
            forget(way);
            continue;
        }
        if (way.answer == Answer::none) {
            ask(way, share);
        }
        if (way.answer == Answer::awaited) {
            return;
        }
        if (way.answer == Answer::granted) {
            open = open.without(share);
        }
    }
    m_outgoing.clear();
    if (open.any()) {
        qCInfo(Logs::power, "nobody keeps awake the %s", open.system ? "machine" : "display");
    }
}

void PowerAssertions::ask(Way& way, AwakeNeeds needs) {
    const std::uint64_t request = ++m_requests;
    way.request = request;
    way.answer = Answer::awaited;
    way.wait = m_scheduler.after(patience, [this, &way] { losePatience(way); });
    way.inhibitor->inhibit(needs, textOf(m_hold->reason),
                           [this, &way, request](std::unique_ptr<Inhibition> inhibition) {
                               answered(way, request, std::move(inhibition));
                           });
}

void PowerAssertions::answered(Way& way, std::uint64_t request, std::unique_ptr<Inhibition> inhibition) {
    if (way.request != request) {
        return; // nobody wants it any more, and it goes at once
    }
    way.wait.cancel();
    if (inhibition) {
        qCInfo(Logs::power, "kept awake by %s", qUtf8Printable(way.inhibitor->name()));
    }
    way.answer = inhibition ? Answer::granted : Answer::refused;
    way.inhibition = std::move(inhibition);
    walk();
}

/// The way may be asked again. What it granted stays until the end of the next walk.
void PowerAssertions::forget(Way& way) {
    way.wait.cancel();
    way.request = 0;
    way.answer = Answer::none;
    if (way.inhibition) {
        m_outgoing.push_back(std::move(way.inhibition));
    }
}

void PowerAssertions::ownerChanged(Way& way) {
    qCInfo(Logs::power, "%s has come, gone or changed hands", qUtf8Printable(way.inhibitor->name()));
    forget(way);
    walk();
}

void PowerAssertions::losePatience(Way& way) {
    qCWarning(Logs::power, "%s has not answered within %g s", qUtf8Printable(way.inhibitor->name()),
              patience);
    way.answer = Answer::late;
    walk();
}

} // namespace veslora
