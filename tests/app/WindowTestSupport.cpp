#include "WindowTestSupport.h"

#include <QSettings>

#include "InstallationCopy.h"

WindowBench::WindowBench() : MainWindowBench("machineSample/Small.xml") {
    ship({"language/english.json", "data/UniquelyIdentifies.json", "oak.jpg"});
    write("Tornvale3.3.0.5.rc", "FILEVERSION 3,3,0,5\n");
    write("toollib.json", "{}");
    write("models/Box.stl", smallModel());
    write("machineSample/Small.xml", smallMachine());
    write("UserPostProcessor/Small.xml", smallPostProcessor());
    settings({});
    readAnew();
}

void WindowBench::settings(const QByteArray& lines) const {
    write("data.ini",
          "[Config]\nUsedConfig=machineSample/Small.xml\n[StatusPreProcessing]\n"
          "PostProcessor=UserPostProcessor/Small.xml\n[MainInterface]\nLanguage=English\n" +
              lines);
}

QString WindowBench::setting(const char* key) const {
    return QSettings(file("data.ini"), QSettings::IniFormat).value(QLatin1String(key)).toString();
}
