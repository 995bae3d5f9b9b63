// SPDX-License-Identifier: MIT
#include "app/ui/groups/GroupEditView.h"

#include "app/state/AppState.h"
#include "app/state/GroupTree.h"
#include "app/state/VaultChanges.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/FormField.h"
#include "app/ui/components/IconPicker.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/Numbers.h"
#include "app/ui/components/SequenceCard.h"
#include "app/ui/components/TextArea.h"
#include "app/ui/components/TextField.h"
#include "app/ui/components/Texts.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>
#include <QPointer>

#include <tuple>

namespace {

constexpr QSize smallest(380, 320);
constexpr QSize ideal(520, 540);
constexpr int notesHeightWithDeletion = 4 * Metric::controlHeightSmall - Metric::s;  // so that the last card is whole

}  // namespace

GroupEditView::GroupEditView(const Environment& environment, Mode mode, QWidget* parent)
    : SheetScaffold(std::holds_alternative<Edit>(mode) ? QStringLiteral("Grubu düzenle") : QStringLiteral("Yeni grup"),
                    QStringLiteral("Vazgeç"),
                    std::holds_alternative<Edit>(mode) ? QStringLiteral("Kaydet") : QStringLiteral("Oluştur"), parent),
      m_state(environment.state),
      m_mode(std::move(mode)) {
    setSizes(smallest, ideal);
    makeControls();
    arrange();
    connectControls();
    load();
    showConfirm();
    keepTyped();
}

void GroupEditView::makeControls() {
    m_icon = new IconPicker(KdbxGroup::defaultIconID);
    m_name = new TextField(QStringLiteral("Grup adı"));
    m_notes = new TextArea(QStringLiteral("Notlar"));
    m_sequence = new SequenceCard(QStringLiteral("Bu grup için varsayılan sekans"),
                                  QStringLiteral("Alt gruplar ve kayıtlar bunu devralır."));
}

void GroupEditView::arrange() {
    content()->addWidget(makeBasicsCard());
    content()->addWidget(m_sequence);
    if (isEditing() && !isRoot()) {
        m_notes->setFixedHeight(notesHeightWithDeletion);
        content()->addWidget(makeDeleteSection());
    }
    content()->addStretch(1);
    setFirstField(m_name);
}

QWidget* GroupEditView::makeBasicsCard() {
    auto* const card = new Card;
    auto* const heading = new QHBoxLayout;
    heading->setSpacing(Metric::m);
    heading->addWidget(new FormField(QStringLiteral("Simge"), m_icon));
    heading->addWidget(new FormField(QStringLiteral("Grup adı"), m_name), 1);
    card->content()->addLayout(heading);
    card->content()->addWidget(new FormField(QStringLiteral("Notlar"), m_notes));
    return card;
}

QWidget* GroupEditView::makeDeleteSection() {
    auto* const section = new Card;
    auto* const remove = new Button(QStringLiteral("Grubu sil"), Button::Variant::danger);
    remove->setSymbol(QStringLiteral("trash"));
    connect(remove, &Button::clicked, this, &GroupEditView::deleteGroup);
    m_entryCount = new Paragraph({}, BrandFont::secondary(), Palette::textSoft);
    section->content()->addWidget(remove, 0, Qt::AlignLeft);
    section->content()->addWidget(m_entryCount);
    showEntryCount();
    return section;
}

void GroupEditView::connectControls() {
    connect(m_name, &TextField::textChanged, this, &GroupEditView::showConfirm);
    connect(this, &GroupEditView::cancelled, this, &GroupEditView::dismiss);
    connect(this, &GroupEditView::confirmed, this, &GroupEditView::commit);
}

void GroupEditView::load() {
    const auto* const edit = std::get_if<Edit>(&m_mode);
    if (!edit)
        return;
    m_name->setWholeText(edit->group.name);
    m_name->end(false);
    m_notes->setWholeText(qtText(edit->group.notes));
    m_icon->setIconID(edit->group.iconID);
    m_sequence->setSequence(edit->group.defaultAutoTypeSequence);
}

void GroupEditView::followVault() {
    auto* const edit = std::get_if<Edit>(&m_mode);
    const auto* const stored = edit ? GroupTree::findGroup(*m_state.root(), edit->group.id) : nullptr;
    if (!stored)
        return;
    edit->group = *stored;
    showEntryCount();
}

void GroupEditView::showConfirm() {
    setConfirmEnabled(m_name->hasContent());
}

void GroupEditView::showEntryCount() {
    if (m_entryCount)
        m_entryCount->setText(QStringLiteral("%1 kayıt ve tüm alt gruplar silinir.")
                                  .arg(Numbers::grouped(GroupTree::totalEntryCount(std::get<Edit>(m_mode).group))));
}

bool GroupEditView::isRoot() const {
    const auto* const root = m_state.root();
    return root && std::get<Edit>(m_mode).group.id == root->id;
}

KdbxGroup GroupEditView::editedGroup() const {
    const auto* const edit = std::get_if<Edit>(&m_mode);
    auto group = edit ? edit->group : KdbxGroup();
    group.name = Text::trimmingWhitespace(m_name->wholeText());
    group.notes = vaultText(m_notes->wholeText());
    group.iconID = m_icon->iconID();
    group.defaultAutoTypeSequence = m_sequence->sequence();
    return group;
}

/// A session that ends while the form is open keeps what was typed.
void GroupEditView::keepTyped() {
    m_untouched = editedGroup();
    m_state.setFormContent(
        [view = QPointer(this)](KdbxDatabase& database) { return view && view->applyTyped(database); });
}

bool GroupEditView::applyTyped(KdbxDatabase& database) const {
    const auto fields = [](const KdbxGroup& group) {
        return std::tie(group.name, group.notes, group.iconID, group.defaultAutoTypeSequence);
    };
    auto group = editedGroup();
    if (fields(group) == fields(m_untouched))
        return false;
    const auto now = Timestamp::now();
    if (const auto* const create = std::get_if<Create>(&m_mode))
        return VaultChanges::addGroup(database, std::move(group), create->parentID, now);
    return VaultChanges::replaceGroup(database, group, now);
}

void GroupEditView::commit() {
    if (const auto* const create = std::get_if<Create>(&m_mode))
        m_state.addGroup(editedGroup(), create->parentID);
    else
        m_state.updateGroup(editedGroup());
    dismiss();
}

void GroupEditView::deleteGroup() {
    const auto id = std::get<Edit>(m_mode).group.id;
    dismiss();  // first, or the sheet would say for a moment that its group is gone
    m_state.deleteGroup(id);
}

void GroupEditView::dismiss() {
    m_state.setRoute(std::nullopt);
}
