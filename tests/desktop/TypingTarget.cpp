// SPDX-License-Identifier: MIT
// typing-target FILE TITLE…: a form for a name and a password under each title; under a title that begins with a plus,
// a dialogue of the form before it, with a button that closes it. Whenever the forms change, all that has been typed
// into them is in FILE, a line a form: title, name, password, how often it was sent and when it was begun.
#include <QApplication>
#include <QDateTime>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

namespace {

class Form final : public QWidget {
public:
    Form(const QString& title, QWidget* owner, std::function<void()> changed)
        : QWidget(owner, owner ? Qt::Dialog : Qt::Window), m_changed(std::move(changed)) {
        setWindowTitle(title);
        auto* const layout = new QFormLayout(this);
        for (auto* const field : {&m_name, &m_password}) {
            layout->addRow(field);
            connect(field, &QLineEdit::textEdited, this, [this] { note(); });
            connect(field, &QLineEdit::returnPressed, this, &Form::send);
        }
        if (owner == nullptr)
            return;
        auto* const button = new QPushButton("Gir");
        connect(button, &QPushButton::clicked, this, &Form::send);
        layout->addRow(button);
    }

    [[nodiscard]] QString line() const {
        return QStringList{windowTitle(), m_name.text(), m_password.text(), QString::number(m_sent),
                           QString::number(m_begun)}
            .join('\t');
    }

private:
    void send() {
        ++m_sent;
        m_changed();
        if (parentWidget() != nullptr)
            close();
    }

    void keyPressEvent(QKeyEvent* event) override {
        // As a dialogue has it: Return on a button presses it.
        auto* const button = qobject_cast<QPushButton*>(focusWidget());
        if (button != nullptr && event->key() == Qt::Key_Return)
            button->click();
        else
            QWidget::keyPressEvent(event);
    }

    void note() {
        if (m_begun == 0)
            m_begun = QDateTime::currentMSecsSinceEpoch();
        m_changed();
    }

    std::function<void()> m_changed;
    QLineEdit m_name;
    QLineEdit m_password;
    int m_sent = 0;
    qint64 m_begun = 0;  // milliseconds since 1970
};

}  // namespace

int main(int argumentCount, char* arguments[]) {
    QApplication application(argumentCount, arguments);
    const auto words = QApplication::arguments();
    std::vector<std::unique_ptr<Form>> forms;
    const auto write = [&] {
        QSaveFile file(words.at(1));
        if (!file.open(QIODevice::WriteOnly))
            return;
        for (const auto& form : forms)
            file.write(form->line().toUtf8() + '\n');
        file.commit();
    };
    for (const auto& title : words.mid(2)) {
        auto* const owner = title.startsWith('+') ? forms.back().get() : nullptr;
        forms.push_back(std::make_unique<Form>(title, owner, write));
        forms.back()->show();
    }
    write();
    const int outcome = QApplication::exec();
    while (!forms.empty())  // a dialogue before its owner
        forms.pop_back();
    return outcome;
}
