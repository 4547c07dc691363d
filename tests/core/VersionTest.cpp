#include "core/Version.h"

#include <gtest/gtest.h>

#include "core/InstallationFolder.h"
#include "core/calc/VersionText.h"
#include "support/TestSupport.h"

TEST(VersionText, FileVersionLine_GivesFourNumbers) {
    EXPECT_EQ(versionOfResource(u"FILEVERSION 3,3,0,5"), QStringLiteral("3.3.0.5"));
    EXPECT_EQ(versionOfResource(u"FILEVERSION 3.3.0.12\r\n"), QStringLiteral("3.3.0.12"));
    EXPECT_EQ(versionOfResource(u"1 VERSIONINFO\n  FILEVERSION 1, 2, 3, 4\nPRODUCTVERSION 9,9,9,9"),
              QStringLiteral("1.2.3.4"));
}

TEST(VersionText, AnythingElse_IsUnknown) {
    for (const char* text :
         {"", "FILEVERSION", "FILEVERSION 3,3,0", "FILEVERSION 1,2,3,4,5", "PRODUCTVERSION 1,2,3,4",
          "X FILEVERSION 1,2,3,4", "FILEVERSION 1,2,3,99999999999"})
        EXPECT_EQ(versionOfResource(QString::fromLatin1(text)), QString()) << text;
}

TEST(Version, ComesFromTheInstallationAndIsEmptyWithoutItsFile) {
    const TemporaryInstallation installation;
    installation.write(kVersionFile, "FILEVERSION 7,8,9,10\n");
    EXPECT_EQ(applicationVersion(), QStringLiteral("7.8.9.10"));
    QFile::remove(installation.file(kVersionFile));
    EXPECT_EQ(applicationVersion(), QString());
}

TEST(Version, ShippedInstallation_CarriesTheVersionOfTheBuild) {
    setInstallationFolder(shippedInstallation());
    EXPECT_EQ(applicationVersion(), builtVersion());
    setInstallationFolder({});
}
