// SPDX-License-Identifier: MIT
#pragma once

#include "core/model/UUID.h"

#include <memory>
#include <optional>

class QMimeData;

/// What is dragged when a group is: its identifier, under a type of its own. As a text it would be taken wherever
/// entries are, and by other programs.
namespace GroupDrag {

[[nodiscard]] std::unique_ptr<QMimeData> contentOf(const UUID& id);

/// The group that a drag carries, which may come from anywhere; none where it carries something else.
[[nodiscard]] std::optional<UUID> groupIn(const QMimeData& content);

}  // namespace GroupDrag
