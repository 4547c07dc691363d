#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <cmath>

#include "BatchTestSupport.h"
#include "support/TestSupport.h"

// The real executable, run on an installation of the test's own.

TEST_F(Batch, Help_GoesToStandardOutput) {
    const Finished result = runBare({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(result.out.contains("convert PROGRAM"));
    EXPECT_EQ(result.err, QString());
}

TEST_F(Batch, Version_IsOneLine) {
    const Finished result = runBare({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_TRUE(QRegularExpression("^tornvale-batch \\d+\\.\\d+\\.\\d+\\.\\d+\n$")
                    .match(QString::fromUtf8(result.out))
                    .hasMatch())
        << result.out.toStdString();
}

TEST_F(Batch, WrongCalls_EndWithStatusTwo) {
    expectError({}, 2, "command", "is missing");
    expectError({"itemise", "p"}, 2, "itemise", "is no command");
    expectError({"check"}, 2, "check", "has no file");
    expectError({"check", "--frob", "program.nc"}, 2, "--frob", "is no option");
    expectError({"check", "program.nc", "other.nc"}, 2, "other.nc", "second file");
    expectError({"convert", "--ucs", "1,2", "program.nc"}, 2, "--ucs", "three numbers");
    expectError({"retime", "--factor", "nan", "program.nc"}, 2, "--factor", "is no number");
    expectError({"convert", "--wcs", "G59", "program.nc"}, 2, "--wcs", "G54, G55");
    expectError({"convert", "--tool", "3", "program.nc"}, 2, "--tool", "0, 7");
    expectError({"check", "--chain", "X->Q", "program.nc"}, 2, "--chain", "Q is no axis");
    expectError({"check", "--chain", "->", "program.nc"}, 2, "--chain", "names no axis");
}

TEST_F(Batch, UnreadableInput_EndsWithStatusThree) {
    expectError({"check", "absent.nc"}, 3, "absent.nc", "does not exist");
    expectError({"check", "data"}, 3, "data", "is a folder");
}

TEST_F(Batch, MachineThatCannotBeUsed_EndsWithStatusFour) {
    expectError({"--machine", "absent.xml", "check", "program.nc"}, 4, "absent.xml", "does not exist");
    write("bad.xml", "<root>\n<machineParameters>\n");
    expectError({"--machine", "bad.xml", "check", "program.nc"}, 4, "bad.xml:3", "is no machine file");
    write("empty.xml", "<root/>");
    expectError({"--machine", "empty.xml", "check", "program.nc"}, 4, "empty.xml", "no complete machine");
    QByteArray still = machineXml();
    still.replace("<interpolationTime>4</interpolationTime>", "");
    write("still.xml", still);
    expectError({"--machine", "still.xml", "retime", "program.nc"}, 4, "still.xml", "interpolationTime");
    QByteArray weak = machineXml();
    weak.replace("<acceleration>2000</acceleration>", "<acceleration>0</acceleration>");
    write("weak.xml", weak);
    expectError({"--machine", "weak.xml", "convert", "program.nc"}, 4, "weak.xml",
                "Exception caught in algorithm");
    QByteArray crooked = machineXml();
    crooked.replace("<direction>0 0 1</direction>", "<direction>up</direction>");
    write("crooked.xml", crooked);
    expectError({"--machine", "crooked.xml", "check", "program.nc"}, 4, "crooked.xml",
                "axis direction format error.");
}

TEST_F(Batch, InstallationThatCannotBeUsed_EndsWithStatusFour) {
    const Finished result = runBare({"--data", path("nowhere"), "check", "program.nc"});
    EXPECT_EQ(result.status, 4);
    EXPECT_TRUE(result.err.contains("is no folder")) << result.err.toStdString();
    write("data/data.ini", "[Config]\n");
    expectError({"check", "program.nc"}, 4, path("data/data.ini"), "names no machine");
    EXPECT_EQ(run({"--machine", "data/machineSample/m.xml", "check", "program.nc"}).status, 0);
    write("broken.json", "{\"version\":");
    expectError({"--machine", "data/machineSample/m.xml", "--tools", "broken.json", "convert", "--tool", "0",
                 "program.nc"},
                4, "broken.json", "no tool library");
}

TEST_F(Batch, Convert_GivesTheFourTexts) {
    const Finished result = run({"convert", "program.nc"});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(result.err, QString());
    const QJsonObject texts = object(result);
    EXPECT_EQ(texts.size(), 4);
    const QString work = texts["WorkCode"].toString();
    EXPECT_EQ(work.count('\n'), 5);
    EXPECT_TRUE(work.startsWith("G1 X0.000 Y0.000 Z50.000 C0.000 A0.000 F30000\n")) << work.toStdString();
    EXPECT_TRUE(texts["LeadIn"].toString().startsWith("G1 X0.000 Y0.000 Z50.000"));
    EXPECT_TRUE(texts["LeadOut"].toString().endsWith("G1 X100.000 Y80.000 Z50.000 C0.000 A0.000 F30000\n"));
    EXPECT_GT(texts["IsoCode"].toString().count('\n'), 500);
    EXPECT_TRUE(texts["IsoCode"].toString().endsWith("G1 X100.000 Y80.000 Z-5.000 C0.000 A0.000  F3000\n"));
}

TEST_F(Batch, ConvertSection_GivesThatTextAlone) {
    const QJsonObject texts = object(run({"convert", "program.nc"}));
    for (const QString name : {"WorkCode", "LeadIn", "IsoCode", "LeadOut"})
        EXPECT_EQ(QString::fromUtf8(run({"convert", "--section", name, "program.nc"}).out),
                  texts[name].toString());
}

TEST_F(Batch, ConvertWithATool_MovesByOriginSpindleAndLength) {
    const QJsonObject texts =
        object(run({"convert", "--tool", "7", "--shift", "1.5", "--ucs=-1,0,5", "program.nc"}));
    EXPECT_TRUE(texts["WorkCode"].toString().startsWith("G1 X0.000 Y0.000 Z50.000"));
    // G54 (10 20 30) + user coordinate (-1 0 5) + spindle 100 + length 65.5 + shift 1.5
    EXPECT_TRUE(texts["LeadIn"].toString().startsWith("G1 X9.000 Y20.000 Z252.000 C0.000 A0.000 F30000\n"))
        << texts["LeadIn"].toString().toStdString();
    EXPECT_EQ(object(run({"convert", "--tool", "7", "--shift=1.5", "--ucs", "-1,0,5", "program.nc"})), texts);
}

TEST_F(Batch, ConvertInAnotherSystem_TakesItsChain) {
    const QString work = object(run({"convert", "--wcs", "G55", "program.nc"}))["WorkCode"].toString();
    EXPECT_TRUE(work.startsWith("G1 X0.000 Y0.000 Z50.000 F30000\n")) << work.toStdString();
}

TEST_F(Batch, RefusedProgram_EndsWithStatusOneAndNamesTheLine) {
    write("arc.nc", "G0 X0 Y0\nG1 X1 F1000\nG2 X500 Y0 R1\n");
    write("kept.json", "before");
    expectError({"-o", path("kept.json"), "convert", "arc.nc"}, 1, "arc.nc:3", "the program is refused");
    EXPECT_EQ(read("kept.json"), QByteArray("before"));
}

TEST_F(Batch, PlaneThatTheMachineCannotLeave_IsAFaultOfTheInput) {
    write("plane.nc", "G0 X0 Y0 Z0\nG16 U V W\nG17\n");
    expectError({"convert", "plane.nc"}, 3, "plane.nc", "Error: Can't find the axis name");
}

TEST_F(Batch, ProgramWithoutMotion_EndsWithStatusOne) {
    write("empty.nc", "");
    const Finished result = run({"convert", "empty.nc"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(object(result)["WorkCode"].toString(), QString());
    EXPECT_TRUE(result.err.startsWith("tornvale-batch: empty.nc: ")) << result.err.toStdString();
}

TEST_F(Batch, AnyBytes_NeverCrash) {
    QByteArray bytes;
    unsigned value = 12345;
    for (int i = 0; i < 20000; ++i) {
        value = value * 1664525 + 1013904223;
        bytes += static_cast<char>(value >> 24);
        if (i % 37 == 0)
            bytes += "\nG1 X";
    }
    write("noise.nc", bytes);
    for (const char* command : {"convert", "transform", "retime", "check", "audit"}) {
        const Finished result = run({command, "noise.nc"});
        EXPECT_GE(result.status, 0) << command;
        EXPECT_LE(result.status, 3) << command << result.err.toStdString();
    }
}

TEST_F(Batch, StandardInput_IsRead) {
    const QByteArray iso = isoCode();
    EXPECT_EQ(run({"check", "-"}, iso).status, 0);
    EXPECT_EQ(object(run({"audit", "-"}, iso))["lines"].toInt(), iso.count('\n'));
}

TEST_F(Batch, Transform_ThereAndBackAgain_RestoresTheNumbers) {
    const QByteArray code =
        "G1 X1.000 Y2.000 Z3.000 C30.000 A-20.000 F1000\nG1 X5.500 Y-2.000 Z3.000 C31.000 A0.000\n";
    const Finished there = run({"transform", "--tool", "0", "--extra-length", "2", "-"}, code);
    EXPECT_EQ(there.status, 0) << there.err.toStdString();
    EXPECT_NE(there.out, code);
    const Finished back =
        run({"transform", "--tool", "0", "--extra-length", "2", "--mode", "1", "-"}, there.out);
    const QRegularExpression word("([XYZCA])(-?[0-9.]+)");
    auto expected = word.globalMatch(QString::fromUtf8(code));
    auto actual = word.globalMatch(QString::fromUtf8(back.out));
    int words = 0;
    for (; expected.hasNext() && actual.hasNext(); ++words) {
        const auto a = expected.next();
        const auto b = actual.next();
        EXPECT_EQ(a.captured(1), b.captured(1));
        EXPECT_NEAR(a.captured(2).toDouble(), b.captured(2).toDouble(), 0.0021);
    }
    EXPECT_EQ(words, 10);
}

TEST_F(Batch, TransformWithoutTool_ChangesNoCoordinateAndSaysSo) {
    const Finished result = run({"transform", "-"}, "G1  X1 Y2\n\nG1 Z3\n");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err.count('\n'), 1);
    EXPECT_TRUE(result.err.contains("no --tool")) << result.err.toStdString();
    EXPECT_EQ(run({"--quiet", "transform", "-"}, "G1 X1\n").err, QString());
}

TEST_F(Batch, Retime_GivesOneLinePerPeriodAtTheFactor) {
    const QByteArray code = "G1 X0 F6000\nG1 X400 F6000\n";
    const QByteArray full = run({"retime", "-"}, code).out;
    const QByteArray half = run({"retime", "--factor", "0.5", "-"}, code).out;
    EXPECT_NEAR(full.count('\n') * 0.004, 4.05, 0.01);  // 400 mm at 100 mm/s, and v / a = 0.05 s of ramps
    EXPECT_NEAR(half.count('\n') * 0.004, 8.025, 0.01);
    EXPECT_TRUE(half.endsWith("X400.000 Y0.000 Z0.000 C0.000 A0.000  F3000\n"));
}

TEST_F(Batch, RetimeOfNothing_EndsWithStatusOneAndLeavesTheFile) {
    write("kept.nc", "before");
    write("one.nc", "G1 X1 F600\n");
    expectError({"-o", path("kept.nc"), "retime", "one.nc"}, 1, "one.nc",
                "there is nothing to re-time, expected two way points and a feed of 0.1 or more\n");
    EXPECT_EQ(read("kept.nc"), QByteArray("before"));
}

TEST_F(Batch, BoxOfThePlanner_BecomesALine) {
    write("back.nc", "G1 X0 F600\nG1 X1 F-600\n");
    const Finished result = run({"retime", "back.nc"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.startsWith("tornvale-batch: back.nc: Error: Time optimal failed\n"))
        << result.err.toStdString();
    EXPECT_TRUE(result.err.contains("F-600")) << result.err.toStdString();
    EXPECT_EQ(result.err.count('\n'), 2);
}

TEST_F(Batch, UnknownAlgorithm_IsToldByTheSetting) {
    write("data/data.ini",
          "[Config]\nUsedConfig=machineSample/m.xml\n[StatusPreProcessing]\nTrajAlgorithem=9\n");
    const Finished result = run({"convert", "program.nc"});
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(result.err.contains("see TrajAlgorithem of data.ini")) << result.err.toStdString();
    EXPECT_EQ(object(result)["IsoCode"].toString(), QString());
}

TEST_F(Batch, SettingsOfThePlanner_AreThoseOfTheDataFolder) {
    const QByteArray code = "G1 X0 Y0 F6000\nG1 X100 F6000\nG1 X100 Y100 F6000\n";
    const QByteArray usual = run({"retime", "-"}, code).out;
    write("data/data.ini",
          "[Config]\nUsedConfig=machineSample/m.xml\n[StatusPreProcessing]\nToleranceBlend=5\n");
    EXPECT_LT(run({"retime", "-"}, code).out.count('\n'), usual.count('\n'));  // wider corners are faster
}

TEST_F(Batch, Check_ReportsEveryAxis) {
    const Finished result = run({"check", "-"}, "G1 X-12.5 Y3\nG1 X40 Z-7\n");
    EXPECT_EQ(result.status, 0);
    const QJsonObject report = object(result);
    EXPECT_EQ(report["exceeded"].toBool(true), false);
    const QJsonArray axes = report["axes"].toArray();
    ASSERT_EQ(axes.size(), 5);
    const QJsonObject x = axes[0].toObject();
    EXPECT_EQ(x["letter"].toString(), QStringLiteral("X"));
    EXPECT_EQ(x["lower"].toDouble(), -500.0);
    EXPECT_EQ(x["upper"].toDouble(), 500.0);
    EXPECT_EQ(x["min"].toDouble(), -12.5);
    EXPECT_EQ(x["max"].toDouble(), 40.0);
}

TEST_F(Batch, CheckOverTheLimit_EndsWithStatusOneAndStillReports) {
    const Finished result = run({"check", "-"}, "G1 X1\nG1 A-130\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_TRUE(object(result)["exceeded"].toBool());
    EXPECT_TRUE(result.err.startsWith("tornvale-batch: -: A reaches -130")) << result.err.toStdString();
}

TEST_F(Batch, AuditOfTheOwnOutput_FindsNoViolation) {
    const QByteArray iso = isoCode();
    const Finished result = run({"audit", "-"}, iso);
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    const QJsonObject report = object(result);
    EXPECT_EQ(report["lines"].toInt(), iso.count('\n'));
    EXPECT_NEAR(report["seconds"].toDouble(), iso.count('\n') * 0.004, 1e-9);
    const QJsonArray axes = report["axes"].toArray();
    ASSERT_EQ(axes.size(), 5);
    for (const QJsonValue& value : axes) {
        const QJsonObject axis = value.toObject();
        EXPECT_EQ(axis["velocityLimit"].toDouble(), 60000.0);
        EXPECT_EQ(axis["accelerationLimit"].toDouble(), 2000.0);
        EXPECT_EQ(axis["jerkLimit"].toDouble(), 50000.0);
        EXPECT_LE(axis["maxVelocity"].toDouble(), 3000.0 * 1.001 + 15.0);
    }
    // Y moves 80 mm from rest to rest, far enough to reach its full acceleration
    EXPECT_NEAR(axes[1].toObject()["maxAcceleration"].toDouble(), 2000.0, 130.0);
}

TEST_F(Batch, AuditOfAJump_EndsWithStatusOneAndNamesTheAxis) {
    const Finished result = run({"audit", "-"}, "G1 X0\nG1 X10\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_NEAR(object(result)["axes"].toArray()[0].toObject()["maxVelocity"].toDouble(), 150000.0, 1e-6);
    EXPECT_EQ(result.err.count('\n'), 1);
    EXPECT_TRUE(result.err.startsWith("tornvale-batch: -: X runs at 150000")) << result.err.toStdString();
}

TEST_F(Batch, OutputFile_IsReplacedOnlyWhenComplete) {
    write("out.json", "before");
    EXPECT_EQ(run({"-o", "out.json", "check", "program.nc"}).status, 0);
    EXPECT_TRUE(QJsonDocument::fromJson(read("out.json")).isObject());
    const QByteArray after = read("out.json");
    EXPECT_EQ(run({"-o", "out.json", "check", "absent.nc"}).status, 3);
    EXPECT_EQ(read("out.json"), after);
    EXPECT_EQ(QDir(path("")).entryList({"out.json*"}, QDir::Files).size(),
              1);  // nothing half written is left
}

TEST_F(Batch, OutputThatCannotBeWritten_IsOneLine) {
    expectError({"-o", "data", "check", "program.nc"}, 2, "data", "is a folder");
    expectError({"-o", "nowhere/out.json", "check", "program.nc"}, 2, "nowhere/out.json",
                "cannot be written");
    if (QFile::exists("/dev/full"))
        expectError({"-o", "/dev/full", "check", "program.nc"}, 2, "/dev/full", "cannot be written");
    EXPECT_FALSE(QFileInfo("/dev/full").isFile());  // a device is written to, never replaced
}

TEST_F(Batch, EndlessInput_IsRefused) {
    if (QFile::exists("/dev/zero"))
        expectError({"check", "/dev/zero"}, 3, "/dev/zero", "longer than");
}

TEST_F(Batch, NamesInOtherAlphabets_Work) {
    const QString name = QStringLiteral("\u7a0b\u5e8f \u0448\u043a\u0430\u0444.nc");
    write(name, kProgram);
    EXPECT_EQ(run({"convert", "-o", QStringLiteral("\u7ed3\u679c.json"), name}).status, 0);
    EXPECT_TRUE(QJsonDocument::fromJson(read(QStringLiteral("\u7ed3\u679c.json"))).isObject());
}

TEST_F(Batch, LineFeedInAFileName_KeepsTheErrorOnOneLine) {
    const Finished result = run({"check", "a\nb.nc"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, QStringLiteral("tornvale-batch: a b.nc: does not exist, expected a file\n"));
}

TEST_F(Batch, SameCallTwice_GivesTheSameBytes) {
    const QStringList call{"convert", "--tool", "0", "program.nc"};
    EXPECT_EQ(run(call).out, run(call).out);
}

/// The data that is shipped, in a folder of the test's own.
class BatchOnShippedData : public Batch {
  protected:
    void SetUp() override {
        const QDir source(shippedInstallation());
        QDirIterator files(source.path(), QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = files.next();
            const QString target = path("data/" + source.relativeFilePath(file));
            QDir().mkpath(QFileInfo(target).absolutePath());
            ASSERT_TRUE(QFile::copy(file, target)) << target.toStdString();
        }
    }
};

TEST_F(BatchOnShippedData, EveryProgram_ConvertsAndIsPlannedWithinItsAccelerations) {
    const QStringList programs = QDir(path("data/programs")).entryList({"*.nc"}, QDir::Files);
    ASSERT_FALSE(programs.isEmpty());
    for (const QString& program : programs) {
        const Finished converted =
            run({"convert", "--section", "IsoCode", "-o", "iso.txt", "data/programs/" + program});
        EXPECT_EQ(converted.status, 0) << program.toStdString() << converted.err.toStdString();
        const QJsonObject report = object(run({"audit", "iso.txt"}));
        EXPECT_GT(report["seconds"].toDouble(), 0.1) << program.toStdString();
        for (const QJsonValue& value : report["axes"].toArray()) {
            const QJsonObject axis = value.toObject();
            // 125 mm/s^2 is what three decimals can add at 4 ms; the feed caps the speed along the path.
            EXPECT_LE(axis["maxAcceleration"].toDouble(), axis["accelerationLimit"].toDouble() * 1.0001 + 125)
                << program.toStdString() << " axis " << axis["letter"].toString().toStdString();
            EXPECT_LE(axis["maxVelocity"].toDouble(), 50000 * 1.0001 + 15)
                << program.toStdString() << " axis " << axis["letter"].toString().toStdString();
        }
    }
}

// The shipped view is of the shipped machine: whole, large, and in the middle.
TEST_F(BatchOnShippedData, View_FillsThePictureWithTheMachine) {
    const Finished result = run({"picture", "-", "--size", "800x500"}, "");
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(result.err, QString());
    const QImage image = QImage::fromData(result.out, "PNG").convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(image.size(), QSize(800, 500));
    QRect drawn;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != image.pixel(0, 0))
                drawn |= QRect(x, y, 1, 1);
        }
    }
    EXPECT_GT(drawn.height(), 375);
    EXPECT_LT(drawn.height(), 450);
    EXPECT_NEAR(drawn.center().x(), 400, 80);
    EXPECT_NEAR(drawn.center().y(), 250, 40);
    EXPECT_NE(run({"--machine", path("data/machineSample/TornNest3.xml"), "picture", "-"}, "").out,
              result.out);
}

// The rails carry the carriages that touch them; everything else is free at home and over the whole program.
TEST_F(BatchOnShippedData, SampleProgramsOfTheMachine_AreFreeOfCollisions) {
    const Finished converted = run({"convert", "--tool", "0", "data/programs/FiveAxisContour.nc"});
    const QJsonObject texts = object(converted);
    const QString code =
        "M6 T1\n" + texts["LeadIn"].toString() + texts["IsoCode"].toString() + texts["LeadOut"].toString();
    const Finished result = run({"simulate", "-"}, code.toUtf8());
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(object(result)["lines"].toInt(), code.count('\n'));
}
