// Compares what a test made with a file of tests/golden that was looked at once and kept. With VELORIN_REBASELINE set
// in the environment it writes the files instead (the `rebaseline` target); look at the difference before committing.
#pragma once

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <cstdlib>
#include <gtest/gtest.h>

/// How far a picture may be from its golden: means of the absolute difference of a colour channel (0 to 255), over the
/// picture and over windows of 16 x 16 pixels, one every 4 pixels. Without text pictures are exact.
struct PictureTolerance {
    double Picture = 0;
    double Window = 0;
};

struct Golden {
    QString Folder = QStringLiteral(VELORIN_SOURCE_DIR "/tests/golden");
    /// What differs goes here for a look.
    QString ActualFolder = QStringLiteral(VELORIN_BINARY_DIR "/golden-actual");
    bool Rebaseline = qEnvironmentVariableIsSet("VELORIN_REBASELINE");

    /// Exact, byte by byte. Use as EXPECT_TRUE(Golden().MatchesText(...)); `name` is beneath the goldens' folder.
    testing::AssertionResult MatchesText(const QString& name, const QByteArray& actual) const {
        return matches(name, actual, [&](const QByteArray& golden) {
            return golden == actual ? std::string() : firstDifference(golden.split('\n'), actual.split('\n'));
        });
    }

    /// A PNG golden. Transparency counts as a channel.
    testing::AssertionResult MatchesPicture(const QString& name, const QImage& actual,
                                            const PictureTolerance& tolerance = {}) const {
        QBuffer png;
        actual.save(&png, "PNG");
        return matches(name, png.data(), [&](const QByteArray& golden) {
            return pictureDifference(QImage::fromData(golden).convertToFormat(QImage::Format_ARGB32),
                                     actual.convertToFormat(QImage::Format_ARGB32), tolerance);
        });
    }

private:
    static testing::AssertionResult save(const QString& target, const QString& name, const QByteArray& content) {
        QFile file(QDir(target).filePath(name));
        if (!content.isEmpty() && QDir().mkpath(QFileInfo(file).path()) && file.open(QIODevice::WriteOnly) &&
            file.write(content) == content.size())
            return testing::AssertionSuccess() << "; now in " << qPrintable(file.fileName());
        return testing::AssertionFailure() << "; cannot write " << qPrintable(file.fileName());
    }

    /// `differenceFrom` says how a golden and `actual` differ, nothing when they are alike.
    template<class Difference>
    testing::AssertionResult matches(const QString& name, const QByteArray& actual,
                                     const Difference& differenceFrom) const {
        if (Rebaseline)
            return save(Folder, name, actual);
        QFile file(QDir(Folder).filePath(name));
        const std::string difference =
            file.open(QIODevice::ReadOnly) ? differenceFrom(file.readAll()) : std::string("there is no golden");
        if (difference.empty())
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << qPrintable(name) << ": " << difference << save(ActualFolder, name, actual).message();
    }

    static std::string firstDifference(const QList<QByteArray>& golden, const QList<QByteArray>& actual) {
        qsizetype at = 0;
        while (at < golden.size() && at < actual.size() && golden[at] == actual[at])
            ++at;
        return "differs in line " + std::to_string(at + 1) + "\n  golden: \"" + golden.value(at).toStdString() +
               "\"\n  actual: \"" + actual.value(at).toStdString() + '"';
    }

    static double meanIn(const QRect& part, const QImage& golden, const QImage& actual) {
        std::int64_t sum = 0;
        constexpr int channels = 4;
        for (int y = part.top(); y <= part.bottom(); ++y)
            for (int i = channels * part.left(); i < channels * (part.right() + 1); ++i)
                sum += std::abs(golden.constScanLine(y)[i] - actual.constScanLine(y)[i]);
        return double(sum) / (channels * part.width() * part.height());
    }

    static std::string pictureDifference(const QImage& golden, const QImage& actual,
                                         const PictureTolerance& tolerance) {
        if (golden.size() != actual.size() || golden.isNull())
            return "golden is " + std::to_string(golden.width()) + " x " + std::to_string(golden.height()) +
                   ", actual " + std::to_string(actual.width()) + " x " + std::to_string(actual.height());
        if (const double mean = meanIn(golden.rect(), golden, actual); mean == 0 || mean > tolerance.Picture)
            return mean == 0 ? "" : "mean difference " + std::to_string(mean) + " over the picture";
        constexpr int side = 16, step = 4;
        const auto within = [](int place, int extent) { return std::max(0, std::min(place, extent - side)); };
        for (int y = 0; y < golden.height(); y += step)
            for (int x = 0; x < golden.width(); x += step) {
                const QRect window(within(x, golden.width()), within(y, golden.height()), side, side);
                if (const double mean = meanIn(window & golden.rect(), golden, actual); mean > tolerance.Window)
                    return "mean difference " + std::to_string(mean) + " in the window at (" + std::to_string(x) +
                           ", " + std::to_string(y) + ")";
            }
        return {};
    }
};
