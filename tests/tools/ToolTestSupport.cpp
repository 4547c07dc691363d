#include "ToolTestSupport.h"

#include <Inventor/SoDB.h>
#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <ostream>

#include "core/LanguageReader.h"
#include "machine/readConfig.h"

namespace {

class SceneLibrary : public ::testing::Environment {
  public:
    void SetUp() override { SoDB::init(); }
};

// NOLINTNEXTLINE(cert-err58-cpp): the test program registers it before its main.
const ::testing::Environment* const kSceneLibrary = ::testing::AddGlobalTestEnvironment(new SceneLibrary);

const QByteArray kEnglish = R"({
  "ToolData": {"EndMillingSawBlades": "End mill", "BallEnd": "Ball end", "UserTool": "User tool",
               "ChainSaw": "Chain saw"},
  "Tv": {"RotationDirection": {"CW": "CW", "CCW": "CCW"}}
})";

const QByteArray kChainSaws = R"([Saw1]
ToolTip=1.5 -2 30
Matrix=10 20 30 0 90 -45
Dir=saw1.iv
Image=saw1.png
Annonation=long, sharp
SpindleNo=3
ToolNumber=21
Rpm=2800
Ax4Compensation=0.25
Ax5Compensation=-1.5

[Saw2]
ToolTip=
Matrix=1 2 3 4 5
Dir=/nowhere/saw2.iv
SpindleNo=many
Rpm=fast

[Saw3]
Dir=
)";

}  // namespace

void PrintTo(const SbVec3f& vector, std::ostream* out) {
    *out << '(' << vector[0] << ' ' << vector[1] << ' ' << vector[2] << ')';
}

ToolRecord unusualTool() {
    ToolRecord tool;
    tool.index = 7;
    tool.spindleNo = 4;
    tool.toolNo = 12;
    tool.length = 123.5F;
    tool.bladeLength = 31.25F;
    tool.diameter = 16.1F;
    tool.handleDiameter = 18;
    tool.rpm = 18000;
    tool.transform = {1, -2, 3.5F, 90, 0, -45};
    tool.annotation = QStringLiteral("粗铣 \"rough\"\n%1");
    tool.installationName = QStringLiteral("C");
    tool.spName = QStringLiteral("T4");
    tool.chainSaw = QStringLiteral("Saw9");
    tool.chainSawPath = QStringLiteral("saw9.iv");
    tool.image = picture(3, 2);
    tool.direction = 1;
    tool.type = 2;
    tool.contour = {SbVec3f(0, 0, 0), SbVec3f(8.05F, 0, 0), SbVec3f(8.05F, 0, -123.5F)};
    tool.toolTip = SbVec3f(0.1F, -123.456789F, 1e-7F);
    return tool;
}

ToolRecord randomTool(std::mt19937& random) {
    std::uniform_real_distribution<float> number(-1000, 1000);
    const auto integer = [&random] { return static_cast<int>(random() % 100); };
    ToolRecord tool;
    tool.index = integer();
    tool.spindleNo = integer();
    tool.toolNo = integer();
    for (float* field : {&tool.length, &tool.bladeLength, &tool.diameter, &tool.handleDiameter, &tool.rpm})
        *field = number(random);
    for (float& field : tool.transform)
        field = number(random);
    for (QString* text :
         {&tool.annotation, &tool.installationName, &tool.spName, &tool.chainSaw, &tool.chainSawPath}) {
        text->clear();
        for (int i = integer() % 8; i > 0; --i)
            text->append(QChar(static_cast<ushort>(32 + random() % 2000)));
    }
    for (int i = integer(); i > 0; --i)
        tool.image.append(static_cast<char>(random() % 256));
    tool.direction = integer() % 2;
    tool.type = integer() % 4;
    for (int i = integer() % 12; i > 0; --i)
        tool.contour.append(SbVec3f(number(random), number(random), number(random)));
    tool.toolTip = SbVec3f(number(random), number(random), number(random));
    return tool;
}

void expectSameTool(const ToolRecord& tool, const ToolRecord& expected) {
    EXPECT_EQ(tool.index, expected.index);
    EXPECT_EQ(tool.spindleNo, expected.spindleNo);
    EXPECT_EQ(tool.toolNo, expected.toolNo);
    EXPECT_EQ(tool.length, expected.length);
    EXPECT_EQ(tool.bladeLength, expected.bladeLength);
    EXPECT_EQ(tool.diameter, expected.diameter);
    EXPECT_EQ(tool.handleDiameter, expected.handleDiameter);
    EXPECT_EQ(tool.rpm, expected.rpm);
    EXPECT_EQ(tool.transform, expected.transform);
    EXPECT_EQ(tool.annotation, expected.annotation);
    EXPECT_EQ(tool.installationName, expected.installationName);
    EXPECT_EQ(tool.spName, expected.spName);
    EXPECT_EQ(tool.chainSaw, expected.chainSaw);
    EXPECT_EQ(tool.chainSawPath, expected.chainSawPath);
    EXPECT_EQ(tool.image, expected.image);
    EXPECT_EQ(tool.direction, expected.direction);
    EXPECT_EQ(tool.type, expected.type);
    EXPECT_EQ(tool.contour, expected.contour);
    EXPECT_EQ(tool.toolTip, expected.toolTip);
}

QByteArray picture(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_RGB888);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

ToolInstallation::ToolInstallation() {
    write(QStringLiteral("data.ini"), "[MainInterface]\nLanguage=English\n");
    write(QStringLiteral("language/english.json"), kEnglish);
    write(QStringLiteral("ChainSawLib/ChainSawLibrary.ini"), kChainSaws);
    write(QStringLiteral("ChainSawLib/saw1.png"), picture(1200, 300));
    write(QStringLiteral("ChainSawLib/saw1.iv"),
          "#Inventor V2.1 ascii\nSeparator { Cube { width 300 height 10 depth 50 } }\n");
    TORNVALE::LanguageReader::instance().reload();
    ConfigReader::instance().setDescription(nullptr);
}

HeldGraph::HeldGraph(SoSeparator* graph) : graph_(graph) {
    if (graph_ != nullptr)
        graph_->ref();
}

HeldGraph::~HeldGraph() {
    if (graph_ != nullptr)
        graph_->unref();
}
