#include "app/AddPointDialog.h"

#include <QDoubleValidator>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

AddPointDialog::AddPointDialog(QWidget* parent) : QDialog(parent) {
    constexpr double kFarthest_mm = 1e6;
    setWindowTitle(QStringLiteral("输入坐标"));
    auto* form = new QFormLayout(this);  // owned by this dialog
    int i = 0;
    for (const char* name : {"X:", "Y:", "Z:"}) {
        auto* edit = new QLineEdit(QStringLiteral("0.0"), this);                     // owned by this dialog
        auto* numbers = new QDoubleValidator(-kFarthest_mm, kFarthest_mm, 6, edit);  // owned by the edit
        numbers->setLocale(QLocale::c());
        edit->setValidator(numbers);
        form->addRow(QLatin1String(name), edit);
        edits_[i++] = edit;
    }
    auto* accept = new QPushButton(QStringLiteral("确认"), this);  // owned by this dialog
    accept->setDefault(true);
    form->addRow(accept);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
}

SbVec3f AddPointDialog::place() const {
    return {edits_[0]->text().toFloat(), edits_[1]->text().toFloat(), edits_[2]->text().toFloat()};
}
