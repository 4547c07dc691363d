#include "app/batch/CommandLine.h"

#include <gtest/gtest.h>

#include "support/TestSupport.h"

namespace {

BatchCall good(const QStringList& arguments) {
    const auto result = readCommandLine(arguments);
    if (const WrongCall* wrong = std::get_if<WrongCall>(&result)) {
        ADD_FAILURE() << wrong->argument.toStdString() << " " << wrong->text.toStdString();
        return {};
    }
    return std::get<BatchCall>(result);
}

/// "argument text" of a call that must be refused.
QString refused(const QStringList& arguments) {
    const auto result = readCommandLine(arguments);
    const WrongCall* wrong = std::get_if<WrongCall>(&result);
    if (wrong == nullptr) {
        ADD_FAILURE() << "accepted: " << arguments.join(' ').toStdString();
        return {};
    }
    EXPECT_FALSE(wrong->argument.isEmpty());
    return wrong->argument + ' ' + wrong->text;
}

}  // namespace

TEST(CommandLine, CommandAndFile_AreEnough) {
    const BatchCall call = good({"retime", "code.nc"});
    EXPECT_EQ(call.command, BatchCommand::Retime);
    EXPECT_EQ(call.input, QStringLiteral("code.nc"));
    EXPECT_EQ(call.factor, 1.0);
    EXPECT_FALSE(call.densePoint);
    EXPECT_FALSE(call.quiet);
    EXPECT_FALSE(call.chain.has_value());
    EXPECT_FALSE(call.outputFile.has_value());
}

TEST(CommandLine, EveryCommand_HasItsName) {
    EXPECT_EQ(good({"convert", "f"}).command, BatchCommand::Convert);
    EXPECT_EQ(good({"transform", "f"}).command, BatchCommand::Transform);
    EXPECT_EQ(good({"check", "f"}).command, BatchCommand::Check);
    EXPECT_EQ(good({"audit", "f"}).command, BatchCommand::Audit);
}

TEST(CommandLine, Values_MayStandBehindEqualsOrBehindABlank) {
    for (const QStringList& form : {QStringList{"--ucs=-1,0,5"}, QStringList{"--ucs", "-1,0,5"}}) {
        const BatchCall call = good(QStringList{"convert"} + form + QStringList{"f"});
        EXPECT_EQ(call.userCoordinate_mm, (BatchCall::Triple{-1, 0, 5}));
    }
    EXPECT_EQ(good({"convert", "--shift", "-2.5", "f"}).shift_mm, -2.5);
    EXPECT_EQ(good({"convert", "--mirror", "-90", "f"}).mirror_deg, -90);
    EXPECT_EQ(good({"check", "--chain=A=B", "f"}).chain, QStringLiteral("A=B"));
}

TEST(CommandLine, CommonOptions_StandBeforeAndBehindTheCommand) {
    const BatchCall call = good({"--data", "d", "--quiet", "audit", "f", "--machine", "m.xml", "-o", "out"});
    EXPECT_EQ(call.dataFolder, QStringLiteral("d"));
    EXPECT_EQ(call.machineFile, QStringLiteral("m.xml"));
    EXPECT_EQ(call.outputFile, QStringLiteral("out"));
    EXPECT_TRUE(call.quiet);
}

TEST(CommandLine, AllOptionsOfConvert_AreTaken) {
    const BatchCall call = good({"convert", "--wcs", "G55", "--chain", "X->Z", "--tool", "3", "--translation",
                                 "1,2,3", "--offset", "4, 5, 6", "--previous-fifth", "12.5", "--section",
                                 "LeadIn", "--tools", "t.json", "f"});
    EXPECT_EQ(call.workCoordinate, QStringLiteral("G55"));
    EXPECT_EQ(call.chain, QStringLiteral("X->Z"));
    EXPECT_EQ(call.tool, 3);
    EXPECT_EQ(call.translation_mm, (BatchCall::Triple{1, 2, 3}));
    EXPECT_EQ(call.offset_mm, (BatchCall::Triple{4, 5, 6}));
    EXPECT_EQ(call.previousFifth_deg, 12.5);
    EXPECT_EQ(call.section, QStringLiteral("LeadIn"));
    EXPECT_EQ(call.toolFile, QStringLiteral("t.json"));
}

TEST(CommandLine, OptionsOfTransformAndRetime_AreTaken) {
    const BatchCall transform = good({"transform", "--extra-length=-3", "--mode", "1", "f"});
    EXPECT_EQ(transform.extraLength_mm, -3.0);
    EXPECT_EQ(transform.mode, 1);
    const BatchCall retime = good({"retime", "--factor", "0.5", "--dense-point", "-"});
    EXPECT_EQ(retime.factor, 0.5);
    EXPECT_TRUE(retime.densePoint);
    EXPECT_EQ(retime.input, QStringLiteral("-"));
}

TEST(CommandLine, DoubleDash_EndsTheOptions) {
    EXPECT_EQ(good({"check", "--", "--odd.nc"}).input, QStringLiteral("--odd.nc"));
}

TEST(CommandLine, HelpAndVersion_NeedNothingElse) {
    EXPECT_TRUE(good({"--help"}).help);
    EXPECT_TRUE(good({"-h"}).help);
    EXPECT_TRUE(good({"convert", "--help"}).help);
    EXPECT_TRUE(good({"--version"}).version);
}

TEST(CommandLine, MissingParts_AreNamed) {
    EXPECT_TRUE(refused({}).startsWith("command is missing"));
    EXPECT_TRUE(refused({"convert"}).startsWith("convert has no file"));
    EXPECT_TRUE(refused({"convert", ""}).startsWith("convert has an empty file name"));
    EXPECT_TRUE(refused({"convert", "f", "--wcs"}).startsWith("--wcs has no value"));
    EXPECT_TRUE(refused({"convert", "--wcs", "--tool", "1", "f"}).startsWith("--wcs has no value"));
    EXPECT_TRUE(refused({"convert", "--wcs=", "f"}).startsWith("--wcs is empty"));
}

TEST(CommandLine, UnknownParts_AreNamed) {
    EXPECT_TRUE(refused({"simplify", "f"}).startsWith("simplify is no command"));
    EXPECT_TRUE(refused({"convert", "--colour", "f"}).startsWith("--colour is no option"));
    EXPECT_TRUE(refused({"convert", "-x", "f"}).startsWith("-x is no option"));
    EXPECT_TRUE(refused({"convert", "f", "g"}).startsWith("g is a second file"));
    EXPECT_TRUE(
        refused({"audit", "--wcs", "G54", "f"}).startsWith("--wcs is no option of the command audit"));
    EXPECT_TRUE(
        refused({"check", "--tool", "1", "f"}).startsWith("--tool is no option of the command check"));
}

TEST(CommandLine, OptionTwice_IsRefused) {
    EXPECT_TRUE(refused({"--quiet", "check", "--quiet", "f"}).startsWith("--quiet is given twice"));
    EXPECT_TRUE(refused({"check", "--chain", "X", "--chain=Y", "f"}).startsWith("--chain is given twice"));
}

TEST(CommandLine, FlagWithAValue_IsRefused) {
    EXPECT_TRUE(refused({"retime", "--dense-point=1", "f"}).startsWith("--dense-point takes no value"));
}

TEST(CommandLine, NumbersThatAreNone_AreRefused) {
    for (const char* bad : {"", "abc", "nan", "inf", "-inf", "1e999", "1,5", "0x10", "1 2"})
        EXPECT_TRUE(refused({"convert", QString("--shift=") + bad, "f"}).contains("is no number")) << bad;
    for (const char* bad : {"1,2", "1,2,3,4", "1,,3", "a,b,c", "1,2,nan", ""})
        EXPECT_TRUE(refused({"convert", QString("--ucs=") + bad, "f"}).contains("three numbers")) << bad;
    for (const char* bad : {"-1", "1.5", "", "x", "99999999999"})
        EXPECT_TRUE(refused({"convert", QString("--tool=") + bad, "f"}).contains("index of a tool")) << bad;
    for (const char* bad : {"2", "-1", "forward"})
        EXPECT_TRUE(refused({"transform", QString("--mode=") + bad, "f"}).contains("expected 0 or 1")) << bad;
    EXPECT_TRUE(refused({"convert", "--mirror=1.5", "f"}).contains("whole number"));
    EXPECT_TRUE(
        refused({"convert", "--section", "isocode", "f"}).contains("WorkCode, LeadIn, IsoCode, LeadOut"));
}

TEST(CommandLine, Help_NamesEveryCommand) {
    const QString help = batchHelp();
    for (const char* present :
         {"convert PROGRAM", "transform CODE", "retime CODE", "check CODE", "audit CODE", "items PROJECT",
          "generate PROJECT", "simulate PROJECT|CODE", "picture PROJECT|CODE"})
        EXPECT_TRUE(help.contains(present)) << present;
}
