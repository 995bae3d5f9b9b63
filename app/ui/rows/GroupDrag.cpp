// SPDX-License-Identifier: MIT
#include "app/ui/rows/GroupDrag.h"

#include <QMimeData>

namespace {

constexpr QLatin1String type("application/x-brenvik-group");

}  // namespace

std::unique_ptr<QMimeData> GroupDrag::contentOf(const UUID& id) {
    auto content = std::make_unique<QMimeData>();
    content->setData(type, QByteArray::fromStdString(id.text()));
    return content;
}

std::optional<UUID> GroupDrag::groupIn(const QMimeData& content) {
    return UUID::fromText(content.data(type).toStdString());
}
