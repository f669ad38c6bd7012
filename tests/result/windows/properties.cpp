#include "platform/widgets/Dialogs.h"
#include "result/ModelTest.h"
#include "result/windows/PropertyRows.h"
#include "result/windows/frmProperties.h"

#include <QPushButton>
#include <QTableView>
#include <QtTest>

namespace {

struct PropertiesTest : ModelTest {
    PropertiesTest() {
        VrfBuilder file = twoSquares();
        file.nodes[1] = {0.1, -2.5};
        EXPECT_TRUE(mdVelorinResultModel::LoadResultFile(folder.Write(file.Bytes(), u"板.a.vrf"_s), model));
        model.LineElementsOnly = true;
        form.emplace(nullptr, model);
        list = form->findChild<QTableView*>(u"lvProperties"_s);
        form->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&*form));
    }
    void click(int row) const {
        list->scrollTo(at(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(at(row)).center());
    }
    QModelIndex at(int row, int column = 1) const { return list->model()->index(row, column); }
    QString key(int row) const { return at(row).data(PropertyRows::KeyRole).toString(); }
    QImage icon(int row) const { return at(row, 0).data(Qt::DecorationRole).value<QPixmap>().toImage(); }
    int count() const { return list->model()->rowCount(); }
    QStringList shown(int first) const {
        QStringList lines;
        for (int row = first; row < count(); ++row)
            lines += at(row, 0).data().toString() + u'=' + at(row).data().toString();
        return lines;
    }

    std::optional<frmProperties> form;
    QTableView* list = nullptr;
};

TEST_F(PropertiesTest, ClickOpensAndShutsTheFourThatHaveAnIcon) {
    EXPECT_EQ(form->windowTitle(), u"プロパティ - 板"_s);
    EXPECT_EQ(shown(0), (QStringList{u"パス="_s + QFileInfo(model.FileName).path(), u"ファイル名=板.a.vrf"_s,
                                     u"プレフィックス=VRF10"_s, u"バージョン=1.00"_s, u"解析タイトル=試験"_s,
                                     u"アイテム=2"_s, u"節点=6"_s, u"要素=2 [ 線要素のみ ]"_s, u"ステップ=2"_s}));
    const QImage shut = icon(5);
    for (int row = 8; row >= 0; --row)
        click(row);
    EXPECT_NE(icon(5), shut);
    EXPECT_EQ(shown(5), (QStringList{u"アイテム=2"_s, u"=変位 ( 節点対象 )"_s, u"=応力 ( 要素対象 )"_s, u"節点=6"_s,
                                     u"=1 : 0.000, 0.000"_s, u"=2 : 0.100, -2.500"_s, u"=3 : 2.000, 0.000"_s,
                                     u"=4 : 0.000, 1.000"_s, u"=5 : 1.000, 1.000"_s, u"=6 : 2.000, 1.000"_s,
                                     u"要素=2 [ 線要素のみ ]"_s, u"=1 : 1 - 2 - 5 - 4"_s, u"=2 : 2 - 3 - 6 - 5"_s,
                                     u"ステップ=2"_s, u"=1 : 初期 ( 0.0 )"_s, u"=2 : Time : 1.250 ( 1.25 )"_s}));
    EXPECT_EQ(key(10) + key(20), u"node-1step-1"_s);
    click(10);
    EXPECT_EQ(count(), 21) << "a row without icon";
    click(8);
    EXPECT_EQ(count(), 15);
    EXPECT_EQ(icon(8), shut);
    EXPECT_EQ(key(10), u"elem-0"_s);
    list->setCurrentIndex(at(8));
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(count(), 21) << "no duplicates, and by the keyboard as well";
    for (const auto& [key, row] : {std::pair(Qt::Key_End, 20), {Qt::Key_Home, 0}}) {
        QTest::keyClick(list, key);
        EXPECT_EQ(list->currentIndex().row(), row);
    }
}

TEST_F(PropertiesTest, MillionNodesOpenWithoutMakingRows) {
    // There are no coordinates behind this count: a row that was made would read beyond the end.
    ResultModel counted;
    counted.Mesh.NodeCount = 1'000'000'000;
    PropertyRows rows(counted);
    rows.Toggle(PropertyRows::Nodes);
    EXPECT_EQ(rows.rowCount(), 1'000'000'009);
}

TEST_F(PropertiesTest, TextExportAsksForAFileAndWritesNone) {
    const QString chosen = folder.Path(u"out.TXT"_s);
    Dialogs::Testing::Start();
    Dialogs::Testing::QueueFile(chosen);
    QTest::mouseClick(form->findChild<QPushButton*>(u"Command2"_s), Qt::LeftButton);
    EXPECT_EQ(Dialogs::Testing::Asked().value(0).Kind, Dialogs::Testing::Kind::SaveFile);
    EXPECT_EQ(Dialogs::Testing::Asked().value(0).Text, folder.Path(u"板"_s));
    Dialogs::Testing::Stop();
    EXPECT_FALSE(QFile::exists(chosen));
    QTest::mouseClick(form->findChild<QPushButton*>(u"Command1"_s), Qt::LeftButton);
    EXPECT_FALSE(form->isVisible());
}

} // namespace
