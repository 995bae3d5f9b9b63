// SPDX-License-Identifier: MIT
#include "app/ui/window/OpenQuestion.h"

#include "app/ui/components/Bidi.h"
#include "app/ui/components/Button.h"
#include "app/ui/components/Labels.h"
#include "app/ui/components/LongText.h"
#include "app/ui/components/RowText.h"
#include "app/ui/theme/Theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace {

constexpr int sheetWidth = 460;
constexpr int mostTitleLines = 3;

QString textFor(OpenQuestion::Unsaved unsaved) {
    const auto what = unsaved.vault && unsaved.form
                          ? QStringLiteral("Açık kasada kaydedilmemiş değişiklikler ve yarım kalmış bir form var.")
                      : unsaved.form ? QStringLiteral("Açık kasada yarım kalmış bir form var.")
                                     : QStringLiteral("Açık kasada kaydedilmemiş değişiklikler var.");
    return what +
           QStringLiteral(" Kaydedilmeyenler şifreli olarak saklanır; bu kasayı yeniden açınca geri getirebilirsin.");
}

}  // namespace

OpenQuestion::OpenQuestion(const QString& fileName, Unsaved unsaved, QWidget* parent)
    : SheetCard({sheetWidth, 0}, {sheetWidth, 0}, parent) {
    const auto name = RowText::line(LongText::beginning(fileName));
    const auto title = QStringLiteral("“%1” açılsın mı?").arg(name);
    setAccessibleName(title);
    arrange(Bidi::withQuotesIsolated(title), textFor(unsaved), unsaved);
    const QSize size(sheetWidth, layout()->totalHeightForWidth(sheetWidth));
    setSizes({0, size.height()}, size);
}

void OpenQuestion::arrange(const QString& title, const QString& text, Unsaved unsaved) {
    auto* const cancel = new Button(QStringLiteral("Vazgeç"), Button::Variant::ghost);
    auto* const open = new Button(QStringLiteral("Kaydetmeden aç"),
                                  unsaved.vault ? Button::Variant::secondary : Button::Variant::primary);
    auto* const save = unsaved.vault ? new Button(QStringLiteral("Kaydet ve aç"), Button::Variant::primary) : nullptr;
    connect(cancel, &Button::clicked, this, &OpenQuestion::cancelled);
    connect(open, &Button::clicked, this, &OpenQuestion::openWanted);
    connect(this, &OpenQuestion::confirmed, this,
            unsaved.vault ? &OpenQuestion::saveWanted : &OpenQuestion::openWanted);

    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(Metric::s);
    buttons->addWidget(cancel);
    buttons->addStretch();
    buttons->addWidget(open);
    if (save != nullptr) {
        connect(save, &Button::clicked, this, &OpenQuestion::saveWanted);
        buttons->addWidget(save);
    }
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(Metric::xl, Metric::xl, Metric::xl, Metric::l);
    column->setSpacing(Metric::s);
    auto* const heading = new Paragraph(title, BrandFont::sheetTitle(), Palette::text);
    heading->setMostLines(mostTitleLines);
    column->addWidget(heading);
    column->addWidget(new Paragraph(text, BrandFont::secondary(), Palette::textSoft));
    column->addStretch();
    column->addSpacing(Metric::l);
    column->addLayout(buttons);
    setFirstField(save != nullptr ? save : open);
}
