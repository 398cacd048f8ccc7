// SPDX-License-Identifier: MIT
// The loudspeakers behind a sound server, for as long as somebody wants them. Each start has a thread and a
// connection of its own, which a stop leaves to end by itself: the main thread waits for neither. Main thread
// only.
#pragma once

#include "VesloraLinux/Audio/OpenAudioOutput.h"
#include "VesloraLinux/Audio/SoundServer.h"

#include <QObject>

#include <cstddef>
#include <list>
#include <thread>
#include <vector>

namespace veslora {

class OpenServerOutput final : public OpenAudioOutput {
  public:
    using Servers = std::vector<std::unique_ptr<const SoundServer>>;

    /// What a start gives its thread to find that nobody listens at any server's address. The kernel knows
    /// that at once, whatever the server does; what takes longer is told by `lost`.
    static constexpr std::chrono::milliseconds findingTime{10};
    /// Between two looks for a server that is gone.
    static constexpr std::chrono::milliseconds lookingPeriod{200};

    /// The first of them that has a device plays. One that was lost may take as long as its patience to come
    /// back; then sound goes another way, and before that there is none.
    explicit OpenServerOutput(Servers servers);
    ~OpenServerOutput() override;
    OpenServerOutput(const OpenServerOutput&) = delete;
    OpenServerOutput& operator=(const OpenServerOutput&) = delete;

    [[nodiscard]] bool start(std::shared_ptr<Mixer> mixer, std::function<void(Loss)> lost) override;
    void stop() override;
    [[nodiscard]] std::optional<std::int64_t> currentSample() const override;
    [[nodiscard]] std::int64_t latency() const override;

    /// How many streams are there or still ending.
    [[nodiscard]] std::size_t streams() const { return m_streams.size(); }

  private:
    struct Stream;

    void letRender(const Stream* stream) const;
    void run(Stream& stream);
    [[nodiscard]] std::optional<Loss> play(Stream& stream);
    void ended(const Stream* stream, std::optional<Loss> loss);

    const Servers m_servers;
    std::function<void(Loss)> m_lost;
    QObject m_mainThread;
    std::list<std::unique_ptr<Stream>> m_streams;
    Stream* m_stream = nullptr;                       ///< of them, the one that plays
    mutable std::optional<std::int64_t> m_lastSample; ///< what was told last
};

} // namespace veslora
