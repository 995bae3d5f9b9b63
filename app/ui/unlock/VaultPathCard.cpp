// SPDX-License-Identifier: MIT
#include "app/ui/unlock/VaultPathCard.h"

#include "app/ui/components/Button.h"
#include "app/ui/components/IconTile.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"

#include <QDir>
#include <QVBoxLayout>

namespace {

constexpr int verticalMargin = 10;
constexpr int tileSide = 32;
constexpr int folderSize = 10;

/// A folder as the user knows it: what lies in their own begins with "~". That one itself has its whole path, since the
/// sign alone says little.
QString shortened(const QString& folder) {
    const QString home = QDir::homePath();
    if (folder.startsWith(home + QLatin1Char('/')))
        return QLatin1Char('~') + folder.mid(home.size());
    return folder;
}

}  // namespace

VaultPathCard::VaultPathCard(QWidget* parent)
    : Card(parent),
      m_fileName(new TextLabel({}, BrandFont::body(12, QFont::DemiBold), Palette::text)),
      m_folder(new TextLabel({}, BrandFont::body(folderSize), Palette::textSoft)) {
    m_folder->setElideMode(Qt::ElideMiddle);
    auto* const change = new Button(QStringLiteral("Değiştir"));
    change->setSmall(true);
    connect(change, &Button::clicked, this, &VaultPathCard::changeWanted);

    content()->setContentsMargins(Metric::m, verticalMargin, Metric::m, verticalMargin);
    auto* const names = new QVBoxLayout;
    names->setSpacing(2);
    names->addWidget(m_fileName);
    names->addWidget(m_folder);
    auto* const row = new QHBoxLayout;
    row->setSpacing(Metric::m);
    row->addWidget(new SymbolTile(QStringLiteral("lock.doc"), Palette::accent, tileSide));
    row->addLayout(names, 1);
    row->addWidget(change);
    content()->addLayout(row);
}

void VaultPathCard::showPath(const std::filesystem::path& path) {
    m_fileName->setText(qtPath(path.filename()));
    m_folder->setText(shortened(qtPath(path.parent_path())));
}
