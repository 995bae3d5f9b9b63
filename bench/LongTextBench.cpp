// SPDX-License-Identifier: MIT
#include "app/ui/components/ApplicationStyle.h"
#include "app/ui/theme/FontRegistrar.h"
#include "app/ui/window/MainWindow.h"
#include "tests/app/ui/WindowTest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>

// How long the window stands still over a text that is longer than people write: until the entry that has it is shown,
// until its form is, and at a letter that is typed there: milliseconds by the clock, and of the processor.
//
//     build/brenvik-long-text-bench field kind bytes
//
// A field is title, username, password, url, notes, tag, field, secret or group; a kind is word, words, lines, emoji,
// marks or right (to left). Without a display set QT_QPA_PLATFORM=offscreen.

namespace {

const std::map<std::string, std::string> pieces{
    {"word", "a"},          {"words", "Bir iki üç sözcük. "}, {"lines", "Bir satır not, iki üç sözcük.\n"},
    {"breaks", "\n"},       {"emoji", "👩‍💻"},         {"marks", "\u0301"},
    {"right", "שלום עולם "}};

std::string repeatedTo(std::size_t size, const std::string& piece) {
    std::string text = "a";
    text.reserve(size + piece.size());
    while (text.size() < size)
        text += piece;
    return text;
}

class LongTextBench : public WindowTest {
public:
    void TestBody() override {}

    void run(const std::string& field, const std::string& text) {
        auto database = smallVault("Kıyas");
        database.root.entries = {entryTitled("Kısa"), with(field, text)};
        if (field == "group")
            database.root.groups.mutableAt(0).name = text;
        putVault(database);
        MainWindow window(environment);
        window.show();
        settle();
        const auto shownLong = database.root.entries[1].id;
        measure("unlock", [&] { unlock(); });
        while (state->prepareBrowsing()) {
        }  // which the program does when it is idle
        state->setSelectedEntryIDs({database.root.entries[0].id});
        settle();
        if (field == "group")
            measure("select", [&] { state->setSelectedGroupID(database.root.groups[0].id); });
        else
            measure("select", [&] { state->setSelectedEntryIDs({shownLong}); });
        measure("reveal", [&] {
            for (auto* const button : window.findChildren<QAbstractButton*>())
                if (button->objectName().endsWith(QStringLiteral(".reveal")) && button->isVisible())
                    button->click();
        });
        measure("form", [&] {
            state->setRoute(field == "group" ? AppState::Route::editGroup(database.root.groups[0].id)
                                             : AppState::Route::editEntry(shownLong));
        });
        auto* const edited = editor(window, field);
        measure("letter", [&] {
            edited->setFocus();
            QTest::keyClick(edited, Qt::Key_X);
        });
        measure("close", [&] { state->setRoute(std::nullopt); });
        measure("search", [&] {
            state->setSearchText("kısa");
            QTest::qWait(1);
        });
        measure("lock", [&] { state->lock(); });
        std::printf("\n");
    }

private:
    static KdbxEntry with(const std::string& field, const std::string& text) {
        auto entry = entryTitled("Uzun");
        if (field == "title")
            entry.title = text;
        if (field == "username")
            entry.username = text;
        if (field == "password")
            entry.password = SecureString(text);
        if (field == "url")
            entry.url = text;
        if (field == "notes")
            entry.notes = text;
        if (field == "tag")
            entry.tags = {text};
        if (field == "field" || field == "secret")
            entry.customFields["Alan"] = text;
        if (field == "secret")
            entry.protectedCustomFields = {"Alan"};
        return entry;
    }

    static QWidget* editor(const QWidget& window, const std::string& field) {
        static const std::map<std::string, QString> names{
            {"title", "Başlık"}, {"username", "Kullanıcı adı"}, {"password", "Parola"},
            {"url", "Adres"},    {"notes", "Notlar"},           {"tag", "Etiketler"},
            {"field", "Değer"},  {"secret", "Değer"},           {"group", "Grup adı"}};
        QWidget* found = nullptr;
        for (auto* const widget : window.findChildren<QWidget*>())
            if (widget->isVisible() && widget->accessibleName() == names.at(field) &&
                (qobject_cast<QLineEdit*>(widget) != nullptr || qobject_cast<QPlainTextEdit*>(widget) != nullptr))
                found = widget;
        return found;
    }

    static void settle() {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);  // as the program's own loop does
    }

    static void measure(const char* what, const std::function<void()>& act) {
        QElapsedTimer watch;
        watch.start();
        const auto processor = std::clock();
        act();
        settle();
        std::printf(" %s %.0f (%.0f)", what, static_cast<double>(watch.nsecsElapsed()) / 1e6,
                    1000.0 * static_cast<double>(std::clock() - processor) / CLOCKS_PER_SEC);
        std::fflush(stdout);
    }
};

}  // namespace

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    FontRegistrar::registerBundledFonts(QStringLiteral(BRENVIK_RESOURCES));
    ApplicationStyle::apply(application);
    if (argumentCount != 4 || !pieces.contains(arguments[2])) {
        std::fprintf(stderr, "usage: brenvik-long-text-bench field kind bytes\n");
        return EXIT_FAILURE;
    }
    LongTextBench().run(arguments[1], repeatedTo(std::stoul(arguments[3]), pieces.at(arguments[2])));
}
