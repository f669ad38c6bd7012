// Compares what a test made with a file of tests/golden that was looked at once and kept. With VELORIN_REBASELINE set
// in the environment it writes the files instead (the `rebaseline` target); look at the difference before committing.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <vector>

/// How far a picture may be from its golden: means of the absolute difference of a colour channel (0 to 255), over the
/// picture and over each window of 16 x 16 pixels. Without text pictures are exact.
struct PictureTolerance {
    double Picture = 0;
    double Window = 0;
};

class Golden {
public:
    /// The goldens of the source tree; what differs from them goes to the build folder for a look.
    Golden()
        : folder(QStringLiteral(VELORIN_SOURCE_DIR "/tests/golden")),
          actualFolder(QStringLiteral(VELORIN_BINARY_DIR "/golden-actual")),
          rebaseline(qEnvironmentVariableIsSet("VELORIN_REBASELINE")) {}
    Golden(const QString& goldenFolder, const QString& folderForActual, bool write)
        : folder(goldenFolder), actualFolder(folderForActual), rebaseline(write) {}

    /// Exact, byte by byte. Use as EXPECT_TRUE(Golden().MatchesText(...)); `name` is beneath the goldens' folder.
    testing::AssertionResult MatchesText(const QString& name, const QByteArray& actual) const {
        if (rebaseline)
            return save(folder, name, actual);
        QFile file(QDir(folder).filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            return keepActual(name, actual) << "there is no golden " << qPrintable(name);
        const QByteArray golden = file.readAll();
        if (golden == actual)
            return testing::AssertionSuccess();
        return keepActual(name, actual) << qPrintable(name) << firstDifference(golden, actual);
    }

    /// A PNG golden. Transparency counts as a channel.
    testing::AssertionResult MatchesPicture(const QString& name, const QImage& actual,
                                            const PictureTolerance& tolerance = {}) const {
        if (rebaseline)
            return save(folder, name, actual);
        const QImage golden(QDir(folder).filePath(name));
        if (golden.isNull())
            return keepActual(name, actual) << "there is no golden " << qPrintable(name);
        const std::string difference = pictureDifference(golden, actual, tolerance);
        if (difference.empty())
            return testing::AssertionSuccess();
        return keepActual(name, actual) << qPrintable(name) << ": " << difference;
    }

private:
    static bool write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
    }
    static bool write(const QString& path, const QImage& picture) { return picture.save(path, "PNG"); }

    template<class Content>
    static testing::AssertionResult save(const QString& target, const QString& name, const Content& content) {
        const QString path = QDir(target).filePath(name);
        if (QDir().mkpath(QFileInfo(path).path()) && write(path, content))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "cannot write " << qPrintable(path);
    }

    template<class Content>
    testing::AssertionResult keepActual(const QString& name, const Content& content) const {
        testing::AssertionResult failure = testing::AssertionFailure();
        if (save(actualFolder, name, content))
            failure << "[now in " << qPrintable(QDir(actualFolder).filePath(name)) << "] ";
        return failure;
    }

    static std::string firstDifference(const QByteArray& golden, const QByteArray& actual) {
        const auto [end, other] = std::mismatch(golden.begin(), golden.end(), actual.begin(), actual.end());
        const qsizetype at = end - golden.begin();
        const auto lineAround = [at](const QByteArray& text) {
            const qsizetype start = at > 0 ? text.lastIndexOf('\n', at - 1) + 1 : 0;
            const qsizetype stop = text.indexOf('\n', at);
            return text.mid(start, stop < 0 ? -1 : stop - start).toStdString();
        };
        return " differs in line " + std::to_string(std::count(golden.begin(), end, '\n') + 1) + "\n  golden: \"" +
               lineAround(golden) + "\"\n  actual: \"" + lineAround(actual) + '"';
    }

    /// Sums over all pixels above and to the left, one row and column more than the picture has; any window's sum is
    /// then four of its entries.
    static std::vector<std::int64_t> summedDifferences(const QImage& a, const QImage& b) {
        const std::size_t stride = std::size_t(a.width()) + 1;
        std::vector<std::int64_t> sums(stride * (std::size_t(a.height()) + 1));
        for (int y = 0; y < a.height(); ++y) {
            const uchar* lineA = a.constScanLine(y);
            const uchar* lineB = b.constScanLine(y);
            std::int64_t row = 0;
            for (int x = 0; x < a.width(); ++x) {
                for (int channel = 4 * x; channel < 4 * x + 4; ++channel)
                    row += std::abs(lineA[channel] - lineB[channel]);
                const std::size_t below = (std::size_t(y) + 1) * stride + std::size_t(x) + 1;
                sums[below] = sums[below - stride] + row;
            }
        }
        return sums;
    }

    /// Empty when the pictures are alike.
    static std::string pictureDifference(const QImage& golden, const QImage& actual,
                                         const PictureTolerance& tolerance) {
        if (golden.size() != actual.size())
            return "golden is " + std::to_string(golden.width()) + " x " + std::to_string(golden.height()) +
                   ", actual " + std::to_string(actual.width()) + " x " + std::to_string(actual.height());
        const std::vector<std::int64_t> sums = summedDifferences(golden.convertToFormat(QImage::Format_ARGB32),
                                                                 actual.convertToFormat(QImage::Format_ARGB32));
        const std::size_t stride = std::size_t(golden.width()) + 1;
        const auto meanIn = [&](const QRect& part) {
            const std::size_t top = std::size_t(part.top()) * stride + std::size_t(part.left());
            const std::size_t bottom = top + std::size_t(part.height()) * stride;
            const std::size_t width = std::size_t(part.width());
            constexpr double channels = 4;
            return double(sums[bottom + width] - sums[bottom] - sums[top + width] + sums[top]) /
                   (channels * part.width() * part.height());
        };
        const double whole = meanIn(golden.rect());
        if (whole > tolerance.Picture)
            return "mean difference " + std::to_string(whole) + " over the picture";
        constexpr int side = 16;
        const QSize window = QSize(side, side).boundedTo(golden.size());
        for (int y = 0; y + window.height() <= golden.height(); ++y)
            for (int x = 0; x + window.width() <= golden.width(); ++x)
                if (const double mean = meanIn({QPoint(x, y), window}); mean > tolerance.Window)
                    return "mean difference " + std::to_string(mean) + " in the window at (" + std::to_string(x) +
                           ", " + std::to_string(y) + ")";
        return {};
    }

    QString folder, actualFolder;
    bool rebaseline;
};
