// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxTransformedKey.h"
#include "core/model/KdbxDatabase.h"
#include "core/platform/RescueStore.h"
#include "core/platform/Scheduler.h"
#include "core/platform/WorkQueue.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Unsaved changes that an earlier session of the vault has left.
struct RescueOffer {
    Timestamp kept;
    std::optional<std::string> failure{};  // why they could not be brought back
    bool operator==(const RescueOffer&) const = default;
};

/// Keeps what a session has not saved: when it ends, and at most once a minute before, each time as a whole vault that
/// the session's credentials open. Offers what earlier sessions have left, until it is taken and saved, or deleted.
///
/// A session writes one copy, over and over, and never over one that was left: of two that were left the newer is
/// offered first.
class RescueKeeper {
public:
    struct Services {
        RescueStore& store;
        WorkQueue& work;
        Scheduler& scheduler;
        std::function<Bytes(const KdbxDatabase& database, const KdbxTransformedKey& key)> encode;
    };

    /// `unsaved` gives the vault while it has unsaved changes, and otherwise none.
    RescueKeeper(Services services, std::function<const KdbxDatabase*()> unsaved);
    ~RescueKeeper();
    RescueKeeper(const RescueKeeper&) = delete;
    RescueKeeper& operator=(const RescueKeeper&) = delete;

    enum class Offering : bool { no, yes };
    /// A session of the vault in that file begins, `key` being what its credentials gave.
    void begin(const std::filesystem::path& vault, std::optional<KdbxTransformedKey> key, Offering offering);
    /// The session's vault differs from what was kept of it.
    void noteChange();
    /// All is in that file now, under that key: what was kept and what was taken of the offers is there as well.
    void noteSaved(const std::filesystem::path& vault, std::optional<KdbxTransformedKey> key);
    enum class Content : bool { ofTheVault, ofAForm };
    /// Keeps `database` before this returns. What the vault is, was kept already where nothing has changed since.
    ///
    /// @throws FileError and what encoding throws.
    void keep(const KdbxDatabase& database, Content content);
    /// The session ends: what was kept is left to the next, and no secret remains.
    void end();

    /// The newest that was left and not yet taken.
    [[nodiscard]] std::optional<RescueOffer> offer() const;
    /// The file of what is offered. @throws FileError.
    [[nodiscard]] Bytes readOffer();
    void setOfferFailure(std::string text);
    void deleteOffer();
    /// What is offered is in the vault now, until that step is undone.
    void takeOffer();
    void noteTakingUndone();
    void noteTakingRedone();

    /// A transformation that knows the session's key.
    [[nodiscard]] KdbxKeys::Transformation knowing(KdbxKeys::Transformation otherwise) const;

private:
    struct Left {
        std::string name;
        RescueOffer offer;
    };

    void schedule(std::chrono::nanoseconds delay);
    void keepBeside();
    const std::string& ownName();

    Services m_services;
    std::function<const KdbxDatabase*()> m_unsaved;
    std::filesystem::path m_vault;
    std::optional<KdbxTransformedKey> m_key;  // none while no session is open
    std::string m_own;                        // empty while the session has no copy
    std::vector<Left> m_offers;               // oldest first
    std::vector<Left> m_taken;                // in the order of taking
    std::vector<Left> m_takenBack;            // by undo, in that order
    std::uint64_t m_changes = 0;
    std::uint64_t m_kept = 0;                        // the change that was the last when a copy was asked for
    std::shared_ptr<std::atomic<bool>> m_hasFailed;  // the last copy that was written beside the main thread
    Scheduler::Task m_task = 0;                      // none while nothing has changed for a while
};
