// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// Does one piece of work at a time on a thread of its own, and brings its result to the thread in
/// which this object lives, which needs a running event loop. To be used in that thread.
class Background : public QObject
{
    Q_OBJECT
public:
    /// Whether the work is still wanted; from any thread.
    using IsWanted = std::function<bool()>;
    /// Uses the result, in the thread of this object.
    using Use = std::function<void()>;
    /// Must own what it uses, as it may go on for a while after it was given up.
    using Work = std::function<Use(const IsWanted& isWanted)>;

    /// @param closing  how long to wait for work that was given up when this object goes; a thread
    ///                 that is stuck in the system then stays behind. None: until it ends.
    explicit Background(std::optional<std::chrono::milliseconds> closing = std::nullopt);
    /// Gives up what runs.
    ~Background() override;

    /// Starts work; what runs is given up.
    void start(Work work);
    /// Gives up what runs: its result is not used. It ends once it asks whether it is wanted, which
    /// nobody waits for.
    void giveUp();
    /// Whether work runs that was not given up. No longer when its result is used.
    bool isRunning() const { return m_job != nullptr; }

private:
    struct Job;

    const std::optional<std::chrono::milliseconds> m_closing;
    std::shared_ptr<Job> m_job; // that runs
};
