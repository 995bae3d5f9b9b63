// SPDX-License-Identifier: MIT
#pragma once

#include "app/ui/components/Badge.h"
#include "app/ui/components/Card.h"
#include "app/ui/components/SecretText.h"
#include "app/ui/detail/EntryDetailPane.h"
#include "tests/app/ui/WindowProbe.h"
#include "tests/app/ui/WindowTest.h"

#include <QAccessible>
#include <QScrollArea>
#include <QScrollBar>

/// What a screen reader says of a widget.
inline QString heard(QWidget* widget, QAccessible::Text text = QAccessible::Name) {
    return QAccessible::queryAccessibleInterface(widget)->text(text);
}

/// The column of the detail over the small vault, and what shows in it.
class EntryDetailFixture : public WindowTest {
protected:
    EntryDetailPane pane{environment};

    EntryDetailFixture() {
        qputenv("TZ", "UTC");
        pane.resize(468, 620);
        pane.show();
        unlock();
    }

    /// Changes the entry "Banka" and shows it.
    void showBank(const std::function<void(KdbxEntry&)>& change) {
        state->edit("Adım", [&](KdbxDatabase& database) { change(database.root.entries.mutableAt(0)); });
        state->setSelectedEntryIDs({bank().id});
        QCoreApplication::processEvents();
    }

    template <class Widget>
    std::vector<Widget*> shown() const {
        QCoreApplication::processEvents();
        std::vector<Widget*> shown;
        for (auto* const widget : pane.findChildren<Widget*>())
            if (widget->isVisibleTo(&pane))
                shown.push_back(widget);
        return shown;
    }
    std::vector<std::string> labels() const {
        std::vector<std::string> labels;
        for (auto* const label : shown<QLabel>())
            labels.push_back(label->text().toStdString());
        return labels;
    }
    std::vector<std::string> badges() const {
        std::vector<std::string> badges;
        for (auto* const badge : shown<Badge>())
            badges.push_back(badge->accessibleName().toStdString());
        return badges;
    }
    /// What is masked or has been revealed, as it shows.
    QString secret(const QString& field) const {
        for (auto* const text : shown<SecretText>())
            if (text->accessibleDescription() == field)
                return heard(text);
        return {};
    }
    /// The button of that name that belongs to a field.
    QAbstractButton* button(const QString& name, const QString& field) const {
        for (auto* const button : shown<QAbstractButton>())
            if (heard(button) == name && heard(button, QAccessible::Description) == field)
                return button;
        return nullptr;
    }
    void press(const QString& name, const QString& field) {
        auto* const found = button(name, field);
        ASSERT_NE(found, nullptr) << qPrintable(name) << " of " << qPrintable(field);
        QTest::mouseClick(found, Qt::LeftButton);
    }
    /// The texts that stand in the card with this one, from its top to its bottom.
    std::vector<std::string> cardWith(const QString& text) const {
        std::vector<std::string> texts;
        for (auto* const label : shown<QLabel>()) {
            if (label->text() != text)
                continue;
            const QWidget* card = label;
            while (card && !qobject_cast<const Card*>(card))
                card = card->parentWidget();
            for (auto* const other : card->findChildren<QLabel*>())
                texts.push_back(other->text().toStdString());
        }
        return texts;
    }
    QScrollBar& scrollBar() const { return *pane.findChild<QScrollArea*>()->verticalScrollBar(); }
};
