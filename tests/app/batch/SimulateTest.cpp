#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "BoxMachine.h"

namespace {

const char* const kTwoContacts =
    "M6 T1\n"
    "X0 Y0 Z-200\n"
    "Z-289\n"  // 1 mm above the table
    "Z-291\n"
    "Z-289\n"
    "X300\n"  // 1 mm above the bed
    "Z-291\n"
    "Z-100\n"
    "X600\n"
    "Z-300\n";  // into the lamp, which takes no part

class Simulate : public BoxMachine {
  protected:
    /// "LINE: FIRST | SECOND" for each contact.
    [[nodiscard]] static QStringList contacts(const Finished& result) {
        QStringList texts;
        for (const QJsonValue& value : object(result)["collisions"].toArray()) {
            const QJsonObject contact = value.toObject();
            EXPECT_EQ(contact.keys(), (QStringList{"first", "line", "second"}));
            texts.append(QString("%1: %2 | %3")
                             .arg(contact["line"].toInt())
                             .arg(contact["first"].toString(), contact["second"].toString()));
        }
        return texts;
    }
};

}  // namespace

TEST_F(Simulate, ContactsKnownByConstruction_AreFoundAtTheirLines) {
    write("two.anc", kTwoContacts);
    const Finished result = run({"simulate", "two.anc"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(contacts(result), (QStringList{"4: X->Z->T1 | Y", "7: X->Z->T1 | Bed"}));
    EXPECT_EQ(object(result)["lines"].toInt(), 10);
    EXPECT_DOUBLE_EQ(object(result)["seconds"].toDouble(), 0.02);
    EXPECT_EQ(result.err, QString("tornvale-batch: two.anc:4: collision: X->Z->T1 touches Y\n"));
}

TEST_F(Simulate, AMillimetreApart_IsNoContact) {
    const Finished result = run({"simulate", "-"}, "M6 T1\nX0 Y0 Z-289\nX300\nX0\n");
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(contacts(result), QStringList());
    EXPECT_EQ(result.err, QString());
}

TEST_F(Simulate, StopAtFirst_EndsThere) {
    const Finished result = run({"simulate", "--stop-at-first", "-"}, kTwoContacts);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(contacts(result), (QStringList{"4: X->Z->T1 | Y"}));
    EXPECT_EQ(object(result)["lines"].toInt(), 4);
    EXPECT_DOUBLE_EQ(object(result)["seconds"].toDouble(), 0.008);
}

TEST_F(Simulate, StopAtFirstWithoutContact_PlaysAll) {
    const Finished result = run({"simulate", "--stop-at-first", "-"}, "X1\nX2\nX3");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(object(result)["lines"].toInt(), 3);
}

TEST_F(Simulate, WithoutAToolInTheSpindle_TheHeadItselfIsTested) {
    EXPECT_EQ(run({"simulate", "-"}, "Z-300\n").status, 0);
    EXPECT_EQ(run({"simulate", "-"}, "Z-379\n").status, 0) << "the head's cube ends at z = 11";
    EXPECT_EQ(contacts(run({"simulate", "-"}, "Z-381\n")), (QStringList{"1: X->Z | Y"}));
}

TEST_F(Simulate, ToolThatIsNotInTheLibrary_ChangesNothing) {
    EXPECT_EQ(run({"simulate", "-"}, "M6 T3\nZ-300\n").status, 0);
    EXPECT_EQ(contacts(run({"simulate", "-"}, "M6 T1\nM6 T3\nZ-300\n")), (QStringList{"3: X->Z->T1 | Y"}));
}

TEST_F(Simulate, ToolsFile_ReplacesTheLibrary) {
    write("none.json", R"({"version":"1.0.0.0"})");
    EXPECT_EQ(run({"--tools", "none.json", "simulate", "-"}, "M6 T1\nZ-300\n").status, 0);
    write("broken.json", "{");
    expectError({"--tools", "broken.json", "simulate", "program.nc"}, 4, "broken.json", "no tool library");
}

// Blank lines keep their numbers, as an editor shows them, but are no moves.
TEST_F(Simulate, BlankLines_AreCountedButNotPlayed) {
    const Finished result = run({"simulate", "-"}, "\nM6 T1\n\n   \nZ-291\n\n");
    EXPECT_EQ(contacts(result), (QStringList{"5: X->Z->T1 | Y"}));
    EXPECT_EQ(object(result)["lines"].toInt(), 2);
}

TEST_F(Simulate, LineEndsOfOtherSystems_GiveTheSame) {
    const QByteArray program(kTwoContacts);
    QByteArray other = program;
    other.replace("\n", "\r\n");
    EXPECT_EQ(run({"simulate", "-"}, other).out, run({"simulate", "-"}, program).out);
    const Finished blank = run({"simulate", "-"}, "X1\r\n\r\nX2\r\n");
    EXPECT_EQ(object(blank)["lines"].toInt(), 2);
    EXPECT_EQ(run({"simulate", "-"}, "\xEF\xBB\xBFM6 T1\nZ-291").status, 1) << "a byte order mark";
}

// A line that stands twice in a row is not played again, so the machine's contact is told once.
TEST_F(Simulate, TheSameLineTwice_IsOneContact) {
    EXPECT_EQ(contacts(run({"simulate", "-"}, "M6 T1\nZ-291\nZ-291\nZ-292\n")),
              (QStringList{"2: X->Z->T1 | Y", "4: X->Z->T1 | Y"}));
}

TEST_F(Simulate, EmptyInput_IsNoMotionAndNoFault) {
    for (const QByteArray& input : {QByteArray(), QByteArray("\n\n"), QByteArray("\r\n \t\n")}) {
        const Finished result = run({"simulate", "-"}, input);
        EXPECT_EQ(result.status, 0);
        EXPECT_EQ(object(result)["lines"].toInt(-1), 0);
        EXPECT_EQ(object(result)["seconds"].toDouble(-1), 0);
        EXPECT_EQ(contacts(result), QStringList());
    }
}

TEST_F(Simulate, InputThatCannotBeRead_EndsWithStatusThree) {
    expectError({"simulate", "absent.anc"}, 3, "absent.anc", "does not exist");
    expectError({"simulate", "data"}, 3, "data", "is a folder");
}

TEST_F(Simulate, OptionsOfOtherCommands_AreRefused) {
    expectError({"simulate", "--line", "3", "program.nc"}, 2, "--line", "is no option of the command");
    expectError({"simulate", "--stop-at-first=1", "program.nc"}, 2, "--stop-at-first", "takes no value");
    expectError({"check", "--stop-at-first", "program.nc"}, 2, "--stop-at-first", "is no option");
    expectError({"simulate", "--chain", "X", "program.nc"}, 2, "--chain", "is no option of the command");
}

TEST_F(Simulate, MachineWithoutItsModel_EndsWithStatusFour) {
    write("data/models/Box.stl", "no mesh");
    expectError({"simulate", "program.nc"}, 4, path("data/machineSample/m.xml"), "X");
}

TEST_F(Simulate, AnyBytes_NeverCrash) {
    QByteArray bytes;
    unsigned value = 4711;
    for (int i = 0; i < 4000; ++i) {
        value = value * 1664525 + 1013904223;
        bytes += static_cast<char>(value >> 24);
        if (i % 37 == 0)
            bytes += "\nX";
        if (i % 91 == 0)
            bytes += "\nM6 T";
    }
    const Finished result = run({"simulate", "-"}, bytes);
    EXPECT_GE(result.status, 0);
    EXPECT_LE(result.status, 1) << result.err.toStdString();
    EXPECT_GT(object(result)["lines"].toInt(), 140);
}

TEST_F(Simulate, NumbersBeyondAllMeasure_TouchNothing) {
    const Finished result =
        run({"simulate", "-"},
            "M6 T1\nZ-99999999999999999999999999999999999999999999\nX1e39\nXnan Yinf\nX-1e300\n");
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(object(result)["lines"].toInt(), 5);
}

TEST_F(Simulate, OneEndlessLine_IsOneLine) {
    QByteArray line = "M6 T1\n";
    for (int i = 0; i < 200000; ++i)
        line += "X1";
    const Finished result = run({"simulate", "-"}, line);
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(object(result)["lines"].toInt(), 2);
}

TEST_F(Simulate, ManyContacts_AreAllListed) {
    QByteArray program = "M6 T1\n";
    constexpr int kLines = 5000;
    for (int i = 0; i < kLines; ++i)
        program += i % 2 == 0 ? "Z-291\n" : "Z-292\n";
    write("scrape.anc", program);
    const Finished result = run({"-o", "out.json", "simulate", "scrape.anc"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err.count('\n'), 1) << "one line, however many contacts";
    const QJsonArray found = QJsonDocument::fromJson(read("out.json")).object()["collisions"].toArray();
    ASSERT_EQ(found.size(), kLines);
    EXPECT_EQ(found.last().toObject()["line"].toInt(), kLines + 1);
}

TEST_F(Simulate, SameCallTwice_GivesTheSameBytes) {
    EXPECT_EQ(run({"simulate", "-"}, kTwoContacts).out, run({"simulate", "-"}, kTwoContacts).out);
}
