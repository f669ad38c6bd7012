// Runs command lines of the companion against small files in a folder of their own.
#pragma once

#include "batch/commandLine.h"

#include "result/VrfBuilder.h"

#include <QBuffer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <gtest/gtest.h>

class BatchTest : public testing::Test {
protected:
    /// Runs a command line of words between blanks, FILE standing for `path`; what it wrote stands in `output` and
    /// `errors`.
    int run(const QString& line) {
        QStringList words = line.split(u' ', Qt::SkipEmptyParts);
        words.replaceInStrings(QRegularExpression(u"^FILE$"_s), path);
        QBuffer outputBuffer(&output), errorBuffer(&errors);
        output.clear();
        errors.clear();
        outputBuffer.open(QIODevice::WriteOnly);
        errorBuffer.open(QIODevice::WriteOnly);
        return batch::Run(words, {outputBuffer, errorBuffer});
    }
    QJsonObject json(const QString& line) {
        EXPECT_EQ(run(line), 0) << errors.constData();
        EXPECT_TRUE(errors.isEmpty() && output.endsWith('\n'));
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(output, &error);
        EXPECT_EQ(error.error, QJsonParseError::NoError) << output.constData();
        return document.object();
    }
    void expectUnusable(const QString& line, const QString& file, const char* reason) {
        EXPECT_EQ(run(line), 1) << line.toStdString();
        EXPECT_TRUE(errors.startsWith(QByteArray(file.toUtf8() + ": " + reason))) << errors.constData();
        EXPECT_EQ(errors.count('\n'), 1) << errors.constData();
        EXPECT_TRUE(errors.endsWith('\n') && output.isEmpty()) << output.constData();
    }
    QByteArray fileBytes(const QString& name) const {
        QFile file(folder.Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    static VrfBuilder withoutSteps() {
        VrfBuilder file = twoSquares();
        file.steps.clear();
        return file;
    }
    TestFolder folder;
    QString path = folder.Write(twoSquares().Bytes(), u"二つ.vrf"_s);
    QByteArray output, errors;
};
