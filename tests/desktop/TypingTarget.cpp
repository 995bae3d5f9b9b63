// SPDX-License-Identifier: MIT
// typing-target FILE TITLE…: a form for a name and a password under each title. Whenever the forms change, all that has
// been typed into them is in FILE, a line a form: title, name, password, how often it was sent and when it was begun.
#include <QApplication>
#include <QDateTime>
#include <QFormLayout>
#include <QLineEdit>
#include <QSaveFile>
#include <QWidget>

#include <functional>
#include <utility>
#include <vector>

namespace {

class Form final : public QWidget {
public:
    Form(const QString& title, std::function<void()> changed) : m_changed(std::move(changed)) {
        setWindowTitle(title);
        auto* const layout = new QFormLayout(this);
        for (auto* const field : {&m_name, &m_password}) {
            layout->addRow(field);
            connect(field, &QLineEdit::textEdited, this, [this] { note(); });
            connect(field, &QLineEdit::returnPressed, this, [this] {
                ++m_sent;
                m_changed();
            });
        }
    }

    [[nodiscard]] QString line() const {
        return QStringList{windowTitle(), m_name.text(), m_password.text(), QString::number(m_sent),
                           QString::number(m_begun)}
            .join('\t');
    }

private:
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
        forms.push_back(std::make_unique<Form>(title, write));
        forms.back()->show();
    }
    write();
    return QApplication::exec();
}
