// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QLineEdit>

#include <cstdio>
#include <fstream>

// A window with one field, whose text is in the file of the first argument after each change.

int main(int argumentCount, char* arguments[]) {
    const QApplication application(argumentCount, arguments);
    const QString file = QApplication::arguments().at(1);
    const QString newFile = file + ".new";
    QLineEdit field;
    const auto write = [&] {
        std::ofstream(newFile.toStdString()) << field.text().toStdString();
        std::rename(newFile.toLocal8Bit(), file.toLocal8Bit());  // a reader finds a whole text
    };
    QObject::connect(&field, &QLineEdit::textChanged, write);
    field.setWindowTitle(QStringLiteral("Receiver"));
    field.resize(900, 40);
    field.show();
    write();
    return QApplication::exec();
}
