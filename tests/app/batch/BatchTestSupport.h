#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/// What a run of the executable left behind.
struct Finished {
    int status = -1;
    QByteArray out;
    QString err;
};

/// A short program that `Batch` writes as "program.nc".
extern const char* const kProgram;
/// The machine of `Batch`: X, Y, Z, C and A without models, zones G54 and G55, a period of 4 ms.
[[nodiscard]] QByteArray machineXml();
/// Two tools without contour, with the indices 0 and 7.
[[nodiscard]] QByteArray toolsJson();

/// The real executable, run on an installation of the test's own.
class Batch : public ::testing::Test {
  protected:
    void SetUp() override;

    [[nodiscard]] QString path(const QString& name) const { return folder_.filePath(name); }
    void write(const QString& name, const QByteArray& content) const;
    [[nodiscard]] QByteArray read(const QString& name) const;

    /// Runs with the test's installation; files are relative to the test's folder.
    [[nodiscard]] Finished run(const QStringList& arguments, const QByteArray& input = {}) const;
    [[nodiscard]] Finished runBare(const QStringList& arguments, const QByteArray& input = {}) const;
    /// A variable of all later runs.
    void setVariable(const QString& name, const QString& value) { variables_.append({name, value}); }

    /// The run must fail with this status and exactly one line that begins "tornvale-batch: PLACE: ".
    void expectError(const QStringList& arguments, int status, const QString& place,
                     const QString& part) const;

    static QJsonObject object(const Finished& result);
    /// Retimed code of the program, made by the tool itself.
    [[nodiscard]] QByteArray isoCode() const;

  private:
    QTemporaryDir folder_;
    QList<QPair<QString, QString>> variables_;
};
