#include <QFile>
#include <QImage>

#include "BoxMachine.h"
#include "support/TestSupport.h"

namespace {

const QColor kBackground(102, 153, 204);

class Picture : public BoxMachine {
  protected:
    void SetUp() override {
        BoxMachine::SetUp();
        write("data/data.ini",
              "[Config]\nUsedConfig=machineSample/m.xml\n[MainInterface]\nBackGroundColor=0.4 0.6 0.8\n");
    }

    [[nodiscard]] QImage picture(const QStringList& options, const QByteArray& program) const {
        const Finished result = run(QStringList{"picture", "-"} + options, program);
        EXPECT_EQ(result.status, 0) << result.err.toStdString();
        EXPECT_EQ(result.err, QString());
        EXPECT_TRUE(result.out.startsWith("\x89PNG"));
        return QImage::fromData(result.out, "PNG").convertToFormat(QImage::Format_RGB32);
    }

    /// The part of all points that `wanted` holds for.
    template <typename Wanted>
    static double share(const QImage& image, const Wanted& wanted) {
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += wanted(QColor(image.pixel(x, y))) ? 1 : 0;
        }
        return count / (1.0 * image.width() * image.height());
    }

    static bool isDrawn(const QColor& c) {
        const auto differs = [](int a, int b) { return qAbs(a - b) > 3; };
        return differs(c.red(), kBackground.red()) || differs(c.green(), kBackground.green()) ||
               differs(c.blue(), kBackground.blue());
    }
    static bool isCollisionRed(const QColor& c) { return c.red() > 60 && c.green() < 45 && c.blue() < 45; }
    static bool isPathRed(const QColor& c) {
        return c.red() > 200 && qAbs(c.green() - 64) < 12 && qAbs(c.blue() - 26) < 12;
    }

    /// The rectangle of all that is not background.
    static QRect drawnArea(const QImage& image) {
        QRect area;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (isDrawn(QColor(image.pixel(x, y))))
                    area |= QRect(x, y, 1, 1);
            }
        }
        return area;
    }
};

const QByteArray kDown = "M6 T1\nX0 Y0 Z-100\nZ-289\n";

}  // namespace

TEST_F(Picture, IsAPngOfTheAskedSizeOnTheSettingsBackground) {
    const QImage image = picture({"--size", "320x200"}, kDown);
    EXPECT_EQ(image.size(), QSize(320, 200));
    EXPECT_EQ(QColor(image.pixel(0, 0)), kBackground);
    EXPECT_GT(share(image, isDrawn), 0.01);
    EXPECT_EQ(picture({}, kDown).size(), QSize(1280, 800));
    for (const QSize& size : {QSize(16, 16), QSize(16, 3000), QSize(5000, 16)}) {
        const QString text = QString("%1x%2").arg(size.width()).arg(size.height());
        EXPECT_EQ(picture({"--size=" + text}, kDown).size(), size);
    }
}

TEST_F(Picture, WithoutACamera_TheMachineFillsThePictureAndIsNotCut) {
    for (const QSize& size : {QSize(640, 400), QSize(400, 400), QSize(200, 400), QSize(900, 200)}) {
        const QImage image =
            picture({"--size", QString("%1x%2").arg(size.width()).arg(size.height())}, kDown);
        const QRect area = drawnArea(image);
        const double across = area.width() / (1.0 * size.width());
        const double up = area.height() / (1.0 * size.height());
        EXPECT_GT(qMax(across, up), 0.8) << size.width() << "x" << size.height();
        EXPECT_LT(qMax(across, up), 0.95) << size.width() << "x" << size.height();
    }
}

TEST_F(Picture, FacesOfDifferentDirections_DifferAndNoneBurnsOut) {
    const QImage image = picture({"--size", "1600x1000"}, "");
    QMap<int, int> greys;  // of the light cubes, which are the only grey things
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor c(image.pixel(x, y));
            if (c.red() == c.green() && c.red() == c.blue())
                ++greys[c.red()];
        }
    }
    constexpr int kSeen = 100;
    QVector<int> faces;
    for (auto it = greys.cbegin(); it != greys.cend(); ++it) {
        if (it.value() > kSeen && (faces.isEmpty() || it.key() - faces.last() > 12))
            faces.append(it.key());
    }
    EXPECT_EQ(faces.size(), 3) << "side, front and top of a cube";
    EXPECT_LT(greys.lastKey(), 252);
}

TEST_F(Picture, AfterACollision_TheTouchingPartsAreRed) {
    const double free = share(picture({"--size", "640x400"}, kDown), isCollisionRed);
    const double touching = share(picture({"--size", "640x400"}, kDown + "Z-291\n"), isCollisionRed);
    EXPECT_LT(free, 0.0015) << "the arrow of the coordinate system";
    EXPECT_GT(touching, free + 0.001) << "four cubes and the tool";
    const double behind = share(picture({"--size", "640x400"}, kDown + "Z-291\nZ-200\n"), isCollisionRed);
    EXPECT_LT(behind, 0.0015) << "the last line is free again";
    const double before =
        share(picture({"--size", "640x400", "--line", "3"}, kDown + "Z-291\n"), isCollisionRed);
    EXPECT_LT(before, 0.0015) << "the collision is only on the next line";
}

TEST_F(Picture, PathOfTheTool_IsDrawnOnTheTable) {
    const QByteArray square = "M6 T1\nX-200 Z-280\nX200\nY200\nX-200\nY0\nX0 Z0\n";
    EXPECT_GT(share(picture({"--size", "640x400"}, square), isPathRed), 0.001);
    EXPECT_EQ(share(picture({"--size", "640x400"}, "X100\nX200\n"), isPathRed), 0) << "no tool, no path";
    EXPECT_EQ(picture({"--wcs", "G54"}, square), picture({}, square));
    expectError({"picture", "--wcs", "G59", "program.nc"}, 2, "--wcs", "expected one of G54");
}

// The program is played to its end for the path; the machine still stands where the line leaves it.
TEST_F(Picture, Line_IsTheMachineAsItWasThere) {
    const QStringList small{"--size", "320x200"};
    const QImage one = picture(small, "X50\n");
    EXPECT_EQ(picture(small + QStringList{"--line", "1"}, "X50\nY200 Z-100\nX20\n"), one);
    EXPECT_EQ(picture(small + QStringList{"--line", "1"}, "X50\nM6 T1\n"), one) << "no tool was in it yet";
    EXPECT_EQ(picture(small + QStringList{"--line", "3"}, "X50\n\n \nX20\n"), one) << "blank lines count";
    EXPECT_NE(picture(small + QStringList{"--line", "4"}, "X50\n\n \nX200\n"), one);
    EXPECT_EQ(picture(small + QStringList{"--line", "2"}, "X50\n\n"), one);
    EXPECT_EQ(picture(small + QStringList{"--line", "1"}, "X50"), one) << "without a line feed";
}

TEST_F(Picture, LineThatIsNotThere_IsRefused) {
    write("three.anc", "X1\nX2\nX3\n");
    expectError({"picture", "--line", "4", "three.anc"}, 3, "three.anc", "has 3 lines, expected at least 4");
    expectError({"picture", "--line", "2147483647", "three.anc"}, 3, "three.anc", "has 3 lines");
    write("nothing.anc", "");
    expectError({"picture", "--line", "1", "nothing.anc"}, 3, "nothing.anc", "has 0 lines");
    for (const char* wrong : {"0", "-1", "2147483648", "1.5", "last", ""})
        expectError({"picture", QString("--line=") + wrong, "three.anc"}, 2, "--line", "expected");
}

TEST_F(Picture, SizesOutOfBounds_AreRefused) {
    for (const char* wrong :
         {"99999999x1", "1x99999999", "0x0", "15x16", "16x8193", "-640x400", "640", "640x", "x400",
          "640x400x2", "640*400", "6e2x400", "640.0x400", "99999999999999999999x400", "axb", "nanxinf", ""})
        expectError({"picture", QString("--size=") + wrong, "program.nc"}, 2, "--size",
                    "is no size, expected a form such as 1280x800, each 16 to 8192");
}

TEST_F(Picture, Camera_IsTakenFromTheFile) {
    write("above.txt", "position 0 0 3000\norientation 0 0 1  0\nfocalDistance 3000\n");
    write("away.txt", "position 0 0 3000\norientation 1 0 0  3.1415927\nfocalDistance 3000\n");
    const QStringList small{"--size", "320x200"};
    const QImage above = picture(small + QStringList{"--camera", "above.txt"}, kDown);
    EXPECT_NE(above, picture(small, kDown));
    EXPECT_GT(share(above, isDrawn), 0.0005);
    EXPECT_EQ(share(picture(small + QStringList{"--camera", "away.txt"}, kDown), isDrawn), 0);
    write("data/camera.txt", "position 0 0 3000\norientation 0 0 1  0\nfocalDistance 3000\n");
    EXPECT_EQ(picture(small, kDown), above) << "the installation's own view";
}

// A file from the window is a view of the machine in use, not of the one that the call names.
TEST_F(Picture, CameraOfTheInstallation_IsNotForAnotherMachine) {
    const QStringList call{"--machine", path("data/machineSample/m.xml"), "picture", "program.nc"};
    const QByteArray all = run(call).out;
    write("data/camera.txt", "position 0 0 3000\norientation 0 0 1  0\n");
    EXPECT_EQ(run(call).out, all);
    EXPECT_NE(run({"picture", "program.nc"}).out, all);
}

TEST_F(Picture, CameraThatIsNone_IsTold) {
    expectError({"picture", "--camera", "absent.txt", "program.nc"}, 3, "absent.txt", "does not exist");
    expectError({"picture", "--camera", "data", "program.nc"}, 3, "data", "is a folder");
    for (const QByteArray& rubbish : {QByteArray(), QByteArray("hello"), QByteArray("position 1 2"),
                                      QByteArray("position nan 0 0"), QByteArray("\x89PNG\r\n\x1a\n\0\0", 10),
                                      QByteArray("position 1 2 3 } Cube {"), QByteArray(1 << 20, 'x')}) {
        write("rubbish.txt", rubbish);
        expectError({"picture", "--camera", "rubbish.txt", "program.nc"}, 3, "rubbish.txt", "is no view");
    }
    write("data/camera.txt", "hello");
    expectError({"picture", "program.nc"}, 4, path("data/camera.txt"), "is no view");
}

TEST_F(Picture, CameraThatSeesNothing_StillGivesAPicture) {
    for (const char* view : {"position 1e30 0 0", "position 0 0 3000 heightAngle 1e-30",
                             "position 0 0 1e-30 nearDistance 0 farDistance 0", "heightAngle 3.2",
                             "position 0 0 3000 orientation 0 0 0 0"}) {
        write("odd.txt", view);
        EXPECT_EQ(picture({"--size", "64x40", "--camera", "odd.txt"}, kDown).size(), QSize(64, 40)) << view;
    }
}

TEST_F(Picture, NumbersBeyondAllMeasure_StillGiveAPicture) {
    for (const char* program : {"M6 T1\nX1e30\nX0\n", "M6 T1\nX0\nX1e39\n", "X-99999999999999999999\n",
                                "M6 T1\nXnan Zinf\nX10\nX1e20\n"})
        EXPECT_EQ(picture({"--size", "64x40"}, program).size(), QSize(64, 40)) << program;
}

TEST_F(Picture, InputThatCannotBeRead_EndsWithStatusThree) {
    expectError({"picture", "absent.anc"}, 3, "absent.anc", "does not exist");
    expectError({"picture", "data"}, 3, "data", "is a folder");
}

TEST_F(Picture, Output_GoesToTheFile) {
    write("kept.png", "before");
    EXPECT_EQ(run({"picture", "-o", "kept.png", "--camera", "absent.txt", "program.nc"}).status, 3);
    EXPECT_EQ(read("kept.png"), QByteArray("before"));
    const Finished result = run({"picture", "-o", "kept.png", "--size", "64x40", "program.nc"});
    EXPECT_EQ(result.status, 0) << result.err.toStdString();
    EXPECT_EQ(result.out, QByteArray());
    EXPECT_EQ(QImage::fromData(read("kept.png"), "PNG").size(), QSize(64, 40));
}

TEST_F(Picture, SameCallTwice_GivesTheSameBytes) {
    const QStringList call{"picture", "--size", "320x200", "program.nc"};
    EXPECT_EQ(run(call).out, run(call).out);
}

// Without a driver there is no context, with or without a display.
TEST_F(Picture, WithoutOpenGl_IsOneLineAndStatusFour) {
    setVariable("__EGL_VENDOR_LIBRARY_DIRS", path("nowhere"));
    write("kept.png", "before");
    expectError({"-o", path("kept.png"), "picture", "program.nc"}, 4, "picture", "there is no OpenGL");
    EXPECT_EQ(read("kept.png"), QByteArray("before"));
    EXPECT_EQ(run({"simulate", "program.nc"}).status, 0) << "the other commands need none";
}
