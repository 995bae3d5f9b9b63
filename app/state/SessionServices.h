// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxKeys.h"
#include "core/container/KdbxTransformedKey.h"
#include "core/model/KdbxDatabase.h"
#include "core/platform/BackgroundWork.h"
#include "core/platform/Bookmarks.h"
#include "core/platform/FileStore.h"
#include "core/platform/Scheduler.h"

#include <functional>

class AutoTyping;
class ClipboardService;
class Preferences;
class RescueStore;
class WorkQueue;
class Workspace;

/// How a vault file is read and written; `KdbxFile`'s functions in the program.
struct VaultCodec {
    std::function<KdbxDatabase(ByteView file, const KdbxKey& key, const KdbxKeys::Transformation& transformation)> load;
    std::function<Bytes(const KdbxDatabase& database, const KdbxKey& key,
                        const KdbxKeys::Transformation& transformation)>
        save;
    std::function<Bytes(const KdbxDatabase& database, const KdbxTransformedKey& key)> saveUnder{};
};

/// The world, as far as a session needs it. All of it outlives the session.
struct SessionServices {
    Preferences& preferences;
    FileStore& files;
    Bookmarks& bookmarks;
    Scheduler& scheduler;
    BackgroundWork& background;
    ClipboardService& clipboard;
    VaultCodec codec;
    Workspace& workspace;
    AutoTyping& autoTyping;
    /// Where unsaved work is kept, and what writes it meanwhile; without them it is lost with its session.
    RescueStore* rescues = nullptr;
    WorkQueue* rescueWork = nullptr;
};
