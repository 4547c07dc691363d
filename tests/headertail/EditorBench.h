#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QTest>
#include <memory>

#include "core/LanguageReader.h"
#include "machine/readConfig.h"
#include "nc/HeaderTailEditor.h"
#include "nc/TestMachine.h"
#include "nc/calc/HeaderTail.h"
#include "support/TestSupport.h"

/// Chains "X->Y->Z->C->A" and "X->Y" and an auxiliary axis W, which stands on "X->Y->W"; Z is at home at 700
/// and may move from -10 to 750.
inline std::unique_ptr<MachineDescription> headerTailMachine() {
    auto machine = makeTestMachine({{"X", 1}, {"Y", 2}, {"Z", 3}, {"C", 4}, {"A", 5}, {"W", 6}});
    const auto axis = [&](int place) -> numericalAxisStruct& {
        return *machine->numericalAxes[static_cast<std::size_t>(place)];
    };
    axis(2).homePosition = "700";
    axis(2).lower = "-10";
    axis(2).upper = "750";
    axis(5).nickName = "Q";
    axis(5).homePosition = "20";
    axis(5).lower = "12.5";
    return machine;
}

inline const QString kFive = QStringLiteral("X->Y->Z->C->A");
inline const QString kTwo = QStringLiteral("X->Y");
inline const QString kFiveHome = QStringLiteral("G1 X0 Y0 Z700 C0 A0 F7000");

/// English texts and the machine above.
class HeaderTailInstallation : public TemporaryInstallation {
  public:
    HeaderTailInstallation() {
        write("data.ini", "[MainInterface]\nLanguage=English\n");
        QFile language(shippedInstallation() + "/language/english.json");
        EXPECT_TRUE(language.open(QIODevice::ReadOnly));
        write("language/english.json", language.readAll());
        TORNVALE::LanguageReader::instance().reload();
        ConfigReader::instance().setDescription(headerTailMachine());
    }
    ~HeaderTailInstallation() { ConfigReader::instance().setDescription(nullptr); }
    HeaderTailInstallation(const HeaderTailInstallation&) = delete;
    HeaderTailInstallation& operator=(const HeaderTailInstallation&) = delete;
};

/// An editor of its own, open on the records of both chains.
struct EditorBench {
    explicit EditorBench(std::shared_ptr<AuxiliaryAxis> auxiliary = nullptr)
        : items(std::make_unique<FormatItems>(std::move(auxiliary))) {
        items->headerTail.add(ConfigReader::instance().description(), kFive);
        items->headerTail.add(ConfigReader::instance().description(), kTwo);
        editor.Edit(items.get());
        QApplication::setActiveWindow(&editor);  // without waiting for a window system
    }

    [[nodiscard]] HeaderTailRecord& record(const QString& chain = kFive) const {
        return *items->headerTail.record(chain);
    }
    [[nodiscard]] QComboBox& chains() const { return *editor.findChild<QComboBox*>(); }
    [[nodiscard]] QGroupBox& box(const QString& title) const {
        for (QGroupBox* box : editor.findChildren<QGroupBox*>()) {
            if (box->title() == title)
                return *box;
        }
        ADD_FAILURE() << "no box " << title.toStdString();
        return *editor.findChild<QGroupBox*>();
    }
    /// By rising id.
    [[nodiscard]] QList<QLineEdit*> inputs(const QString& title) const {
        return box(title).findChildren<QLineEdit*>();
    }
    [[nodiscard]] QLineEdit& input(const QString& title, int id) const {
        for (QLineEdit* input : inputs(title)) {
            if (input->property("id").toInt() == id)
                return *input;
        }
        ADD_FAILURE() << title.toStdString() << " has no axis " << id;
        return *inputs(title).first();
    }
    [[nodiscard]] QStringList texts(const QString& title) const {
        QStringList texts;
        for (const QLineEdit* input : inputs(title))
            texts.append(input->text());
        return texts;
    }
    void type(const QString& title, int id, const QString& text) const {
        QLineEdit& field = input(title, id);
        field.setFocus();
        field.selectAll();
        if (text.isEmpty())
            QTest::keyClick(&field, Qt::Key_Delete);
        QTest::keyClicks(&field, text);
    }
    [[nodiscard]] QAbstractButton& button(const QString& text) const {
        for (QAbstractButton* button : editor.findChildren<QAbstractButton*>()) {
            if (button->text() == text)
                return *button;
        }
        ADD_FAILURE() << "no button " << text.toStdString();
        return *editor.findChild<QAbstractButton*>();
    }
    void click(const QString& text) const { QTest::mouseClick(&button(text), Qt::LeftButton); }

    std::unique_ptr<FormatItems> items;
    TORNVALE::HeaderTailEditor editor;
};
