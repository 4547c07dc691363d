#include "tools/ChainSawLibrary.h"

#include <gtest/gtest.h>

#include "ToolTestSupport.h"
#include "tools/ToolData.h"
#include "tools/ToolPicture.h"

namespace {

/// The checksum of a PNG chunk.
quint32 checksum(const QByteArray& bytes) {
    quint32 sum = 0xFFFFFFFFU;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum & 1U) != 0 ? (sum >> 1U) ^ 0xEDB88320U : sum >> 1U;
    }
    return ~sum;
}

QByteArray bigEndian(quint32 number) {
    QByteArray bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes.append(static_cast<char>(number >> shift & 0xFFU));
    return bytes;
}

}  // namespace

TEST(ChainSawLibrary, Groups_AreTheChainSaws) {
    const ToolInstallation installation;
    EXPECT_EQ(ChainSawLibrary::path(), installation.file(QStringLiteral("ChainSawLib/ChainSawLibrary.ini")));
    EXPECT_EQ(ToolData::chainSawLibraryPath(), ChainSawLibrary::path());
    EXPECT_EQ(ChainSawLibrary::groups(),
              (QStringList{QStringLiteral("Saw1"), QStringLiteral("Saw2"), QStringLiteral("Saw3")}));
    EXPECT_EQ(ChainSawLibrary::values(QStringLiteral("Saw4")).has_value(), false);
    EXPECT_EQ(ChainSawLibrary::values(QString()).has_value(), false);
    // A comma in a text makes the settings library take it for a list.
    EXPECT_EQ(ChainSawLibrary::values(QStringLiteral("Saw1"))->value(QStringLiteral("Annonation")),
              QStringLiteral("long, sharp"));
}

TEST(ChainSawLibrary, MissingFile_HasNoGroups) {
    const TemporaryInstallation installation;
    EXPECT_EQ(ChainSawLibrary::groups(), QStringList());
    EXPECT_EQ(ChainSawLibrary::values(QStringLiteral("Saw1")).has_value(), false);
}

TEST(ChainSawLibrary, RelativePaths_StandBelowItsFolder) {
    const ToolInstallation installation;
    EXPECT_EQ(ChainSawLibrary::modelPath(QStringLiteral("a/b.iv")),
              installation.file(QStringLiteral("ChainSawLib/a/b.iv")));
    EXPECT_EQ(ChainSawLibrary::modelPath(QStringLiteral("/a/b.iv")), QStringLiteral("/a/b.iv"));
}

TEST(ToolData, ChainSawOfTheLibrary_IsFilledWithItsPictureScaled) {
    const ToolInstallation installation;
    ToolData tool;
    const LogCapture log;
    tool.LoadChainSawData(QStringLiteral("Saw1"));
    EXPECT_EQ(tool.record().type, 3);
    EXPECT_EQ(tool.record().toolNo, 21);
    EXPECT_EQ(tool.record().annotation, QStringLiteral("long, sharp"));
    EXPECT_EQ(tool.record().ax5Compensation, -1.5F);
    EXPECT_EQ(tool.picture().size(), QSize(600, 150));
    EXPECT_EQ(tool.record().image.left(4), QByteArray("\x89PNG"));
    EXPECT_EQ(tool.text(1), QStringLiteral("3"));
    EXPECT_EQ(tool.text(9), QStringLiteral("Chain saw"));
    EXPECT_EQ(log.lines().size(), 0U) << log.all().toStdString();
}

TEST(ToolData, ChainSawWithoutPicture_LogsAndStaysUsable) {
    const ToolInstallation installation;
    installation.write(QStringLiteral("ChainSawLib/saw1.png"), "no picture");
    for (const char* group : {"Saw1", "Saw2"}) {
        ToolData tool(unusualTool());
        const LogCapture log;
        tool.LoadChainSawData(QString::fromLatin1(group));
        EXPECT_EQ(log.count(QStringLiteral(" load Image failed.ImagePath:") +
                            installation.file(QStringLiteral("ChainSawLib/"))),
                  1);
        EXPECT_EQ(tool.picture().isNull(), true);
        EXPECT_EQ(tool.record().isChainSaw(), true);
    }
}

TEST(ToolData, ChainSawWithFiveNumbersInItsMatrix_KeepsTheTransform) {
    const ToolInstallation installation;
    ToolData tool(unusualTool());
    tool.LoadChainSawData(QStringLiteral("Saw2"));
    EXPECT_EQ(tool.record().transform, unusualTool().transform);
    EXPECT_EQ(tool.record().toolTip, unusualTool().toolTip);
    EXPECT_EQ(tool.record().spindleNo, 0);
    EXPECT_EQ(tool.record().rpm, 0);
}

TEST(ToolData, ChainSawThatTheLibraryLacks_HasNoShape) {
    const ToolInstallation installation;
    ToolData tool;
    tool.LoadChainSawData(QStringLiteral("Saw4"));
    EXPECT_EQ(tool.record().chainSaw, QStringLiteral("Saw4"));
    EXPECT_EQ(tool.GetSeparator(), nullptr);
}

TEST(ToolData, ChainSawFromAProject_TakesOnlyTheCompensationsOfItsGroup) {
    const ToolInstallation installation;
    ToolRecord record = unusualTool();
    record.type = 3;
    record.chainSaw = QStringLiteral("Saw1");
    const QJsonObject json = toolToJson(record);
    ToolData tool;
    tool.fromJson(json);
    EXPECT_EQ(tool.record().ax4Compensation, 0.25F);
    EXPECT_EQ(tool.record().ax5Compensation, -1.5F);
    expectSameTool(tool.record(), record);
}

TEST(ToolData, CompensationsOfAnUnknownGroupOrAnotherKind_Stay) {
    const ToolInstallation installation;
    ToolRecord record = unusualTool();
    record.chainSaw = QStringLiteral("Saw1");
    ToolData revolved;
    revolved.fromJson(toolToJson(record));
    EXPECT_EQ(revolved.record().ax4Compensation, 0);
    record.type = 3;
    record.chainSaw = QStringLiteral("Saw4");
    ToolData unknown;
    unknown.record().ax4Compensation = 9;
    unknown.fromJson(toolToJson(record));
    EXPECT_EQ(unknown.record().ax4Compensation, 9);
}

TEST(ToolPicture, Bytes_ComeBackAndGarbageIsNull) {
    EXPECT_EQ(toolImageFromBytes(picture(3, 2)).size(), QSize(3, 2));
    for (const QByteArray& bytes : {QByteArray(), QByteArray("x"), picture(30, 30).left(40)})
        EXPECT_EQ(toolImageFromBytes(bytes).isNull(), true);
    EXPECT_EQ(toolImageBytes(QImage()), QByteArray());
}

TEST(ToolPicture, HeaderThatClaimsAHugePicture_IsRefused) {
    // Width and height stand behind the signature and the head of the first chunk, its checksum at 29.
    const auto withSize = [](quint32 width, quint32 height) {
        QByteArray bytes = picture(3, 2);
        bytes.replace(16, 8, bigEndian(width) + bigEndian(height));
        bytes.replace(29, 4, bigEndian(checksum(bytes.mid(12, 17))));
        return bytes;
    };
    ASSERT_EQ(withSize(3, 2), picture(3, 2));
    EXPECT_EQ(toolImageFromBytes(withSize(1000000, 1000000)).isNull(), true);
    EXPECT_EQ(toolImageFromBytes(withSize(65536, 65536)).isNull(), true);
}

TEST(ToolPicture, LargeImages_AreFittedIntoSixHundred) {
    const auto fitted = [](int width, int height) {
        return toolImageFromBytes(toolImageBytes(QImage(width, height, QImage::Format_RGB888))).size();
    };
    EXPECT_EQ(fitted(1200, 300), QSize(600, 150));
    EXPECT_EQ(fitted(300, 1200), QSize(150, 600));
    EXPECT_EQ(fitted(601, 601), QSize(600, 600));
    EXPECT_EQ(fitted(600, 600), QSize(600, 600));
    EXPECT_EQ(fitted(20, 10), QSize(20, 10));
}
