#include "platform/base/NativePath.h"

#include <QRandomGenerator>
#include <gtest/gtest.h>

TEST(NativePath, EveryNameComesBack) {
    QRandomGenerator random(1);
    for (int i = 0; i < 100000; ++i) {
        // Pieces of characters, so that good and bad ones meet in all ways.
        QByteArray name;
        while (random.bounded(8) > 0)
            name +=
                QByteArray("a/\xef\xbb\xbf\xed\xb2\x80\xf0\x9f\x98\x80\xff").mid(random.bounded(12), random.bounded(5));
        const QString text = NativePath::Text(name), shown = NativePath::Shown(text);
        ASSERT_EQ(NativePath::Of(text).native(), name.toStdString()) << name.toHex().constData();
        ASSERT_EQ(text == shown, name.isValidUtf8()) << name.toHex().constData();
        ASSERT_TRUE(shown.isValidUtf16() && shown.size() == text.size());
    }
    EXPECT_TRUE(NativePath::Of(QString(3, QChar(0))).empty());
}
