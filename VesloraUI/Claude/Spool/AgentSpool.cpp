// SPDX-License-Identifier: MIT
#include "VesloraUI/Claude/Spool/AgentSpool.h"

#include "VesloraUI/Claude/Spool/SupportDirectory.h"
#include "VesloraUI/Platform/Logs.h"

#include <tuple>
#include <utility>
#include <vector>

namespace veslora {

namespace {

constexpr double sweepPeriod = 3600;

} // namespace

AgentSpool::AgentSpool(Scheduler& scheduler, SupportDirectory& support, std::string_view name,
                       UnderstandSpoolFile understand, std::function<void()> onNews)
    : m_scheduler(scheduler), m_support(support), m_name(name), m_path(support.pathOf(name)),
      m_understand(std::move(understand)), m_onNews(std::move(onNews)) {}

AgentSpool::~AgentSpool() {
    stop();
}

void AgentSpool::create() {
    m_support.createFolder(m_name);
}

void AgentSpool::stop() {
    m_reading.cancel();
    m_hasMore = false;
    if (const auto round = std::exchange(m_round, nullptr)) {
        round->cancel();
    }
}

void AgentSpool::take() {
    if (m_round) {
        m_hasMore = true;
    } else {
        begin();
    }
}

void AgentSpool::begin() {
    m_hasMore = false;
    OpenedFolder opened = m_support.openFolder(m_name);
    const bool isMissing = opened.error == std::errc::no_such_file_or_directory;
    if (m_trouble.begins(isMissing ? std::error_code() : opened.error)) {
        qCWarning(Logs::spool, "can't open %s: %s", m_path.c_str(), opened.error.message().c_str());
    }
    if (!opened) {
        return;
    }
    const Timestamp now = m_scheduler.now();
    std::optional<Timestamp> sweepBefore;
    if (now - m_lastSweep >= sweepPeriod) {
        m_lastSweep = now;
        sweepBefore = now - eventLifetime;
    }
    m_round = std::make_shared<SpoolRound>(std::move(opened.folder), m_understand, std::exchange(m_stuck, {}),
                                           sweepBefore);
    if (m_round->find(atOnce.files)) {
        m_round->read(atOnce);
    }
    takeIn();
}

void AgentSpool::takeIn() {
    m_round->takeIn();
    if (!m_round->isOver()) {
        readOn();
        return;
    }
    m_stuck = m_round->takeStuck();
    m_round.reset();
}

void AgentSpool::readOn() {
    m_reading =
        m_scheduler.concurrently([round = m_round] { round->read(aside); }, [this] { portionWasRead(); });
}

void AgentSpool::portionWasRead() {
    takeIn();
    if (!m_round && m_hasMore) {
        begin();
    }
    // Last, as a listener may ask for more or end everything.
    m_onNews();
}

} // namespace veslora
