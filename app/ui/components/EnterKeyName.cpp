// SPDX-License-Identifier: MIT
#include "app/ui/components/EnterKeyName.h"

#include <QCoreApplication>
#include <QTranslator>

#include <string_view>

namespace {

class Correction final : public QTranslator {
public:
    using QTranslator::QTranslator;

    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char* context, const char* text, const char*, int) const override {
        using namespace std::string_view_literals;
        const bool isEnter = context == "QShortcut"sv && (text == "Return"sv || text == "Enter"sv);
        return isEnter ? QStringLiteral("Enter") : QString();
    }
};

}  // namespace

void EnterKeyName::install(QCoreApplication& application) {
    QCoreApplication::installTranslator(new Correction(&application));
}
