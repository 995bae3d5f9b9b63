// SPDX-License-Identifier: MIT
#include "app/ui/components/ReplaceQuestion.h"

#include "app/ui/components/Bidi.h"

#include <QMessageBox>

bool ReplaceQuestion::isAllowed(QWidget* parent, const QString& title, const QString& fileName) {
    const auto question = QStringLiteral("“%1” zaten var. Yerine yenisini koymak istiyor musun?");
    QMessageBox box(QMessageBox::Warning, title, Bidi::withQuotesIsolated(question.arg(fileName)),
                    QMessageBox::Yes | QMessageBox::No, parent);
    box.setTextFormat(Qt::PlainText);  // a name may look like markup
    box.setDefaultButton(QMessageBox::No);
    return box.exec() == QMessageBox::Yes;
}
