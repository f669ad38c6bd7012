#include "ConfigurationFolder.h"
#include "TestFolder.h"

#include "platform/base/Drives.h"
#include "platform/base/NativePath.h"
#include "platform/widgets/ctlDirTree.h"
#include "platform/widgets/frmSelDir.h"

#include <QLineEdit>
#include <QPushButton>
#include <QtTest>
#include <filesystem>
#include <gtest/gtest.h>

namespace {

TEST(Drives, AreRootHomeAndWhatIsMountedForPeople) {
    const TestFolder folder;
    const QString table =
        folder.Write("proc /proc proc rw 0 0\n/dev/sda1 / ext4 rw 0 0\n/dev/sda2 /boot/efi vfat rw 0 0\n"
                     "/dev/sdb1 /media/u/a\\040\xff ext4 rw 0 0\nserver:/x /data nfs rw 0 0\n"
                     "tmpfs /tmp tmpfs rw 0 0\n/dev/sdc1 /data ext4 rw 0 0\n//nas/b /run/media/b cifs rw 0 0\n");
    using Drives::Kind;
    const QList<Drives::Drive> drives = Drives::All(table);
    ASSERT_EQ(drives.size(), 5);
    EXPECT_EQ(drives[1].Path, qEnvironmentVariable("HOME") + u'/');
    EXPECT_EQ(drives[2], (Drives::Drive{Kind::Disk, NativePath::Text("/media/u/a \xff/"), u"a \ufffd"_s}));
    EXPECT_EQ(drives[3], (Drives::Drive{Kind::Network, u"/data/"_s, u"data"_s}));
    EXPECT_EQ(drives[4], (Drives::Drive{Kind::Network, u"/run/media/b/"_s, u"b"_s}));
    EXPECT_EQ(Drives::All(folder.Path(u"none"_s)).size(), 2);
}

/// The children that the tree shows of what is selected, with those that can be opened marked.
QString below(const ctlDirTree& tree) {
    QStringList texts;
    const QTreeWidgetItem* node = tree.selectedItems().value(0);
    for (int i = 0; node && i < node->childCount(); ++i)
        texts += node->child(i)->text(0) + (node->child(i)->childCount() > 0 ? u"+"_s : QString());
    return texts.join(u' ');
}

TEST(DirTree, OpensWhatIsThereAndFollowsTheDisk) {
    const TestFolder folder;
    const std::filesystem::path root = NativePath::Of(folder.Path(u"top"_s));
    for (const char* name : {"b/deep", "A", "c\xff/in/index.HTML", "hidden/x"})
        std::filesystem::create_directories(root / name);
    std::filesystem::create_directory_symlink(root, root / "b/circle");
    folder.Write("", u"top/b/Index.htm5"_s);
    frmSelDir form;
    form.show();
    auto& tree = *form.findChild<ctlDirTree*>();
    auto& ok = *form.findChild<QPushButton*>(u"Command1_0"_s);
    int changes = 0;
    QObject::connect(&tree, &ctlDirTree::Change, [&] { ++changes; });
    const auto enter = [&](const QString& path) -> QString {
        EXPECT_EQ(tree.SetPath(path), std::nullopt);
        EXPECT_EQ(std::exchange(changes, 0), 1);
        EXPECT_EQ(form.Path(), NativePath::Absolute(path) + u'/');
        return below(tree) + (ok.isEnabled() ? u" ok"_s : QString());
    };
    const QString top = folder.Path(u"top"_s);
    EXPECT_EQ(enter(top), u"A b+ c\ufffd+ hidden+"_s);
    EXPECT_EQ(enter(top + u"/x/../b/"_s), u"circle+ deep ok"_s);
    EXPECT_EQ(enter(top + u"/b/circle/b/circle/b"_s), u"circle+ deep ok"_s);
    EXPECT_EQ(enter(NativePath::Text((root / "c\xff/in").native())), u"index.HTML"_s);
    EXPECT_EQ(form.findChild<QLineEdit*>(u"txtPath"_s)->text(), top + u"/c\ufffd/in"_s);
    std::filesystem::create_directories(root / "B2/new");
    EXPECT_EQ(enter(top + u"/B2"_s), u"new"_s);
    EXPECT_EQ(enter(top), u"A b+ B2+ c\ufffd+ hidden+"_s);
    for (const QString& bad : QStringList{top + u"/none"_s, top + u"/b/Index.htm5"_s, QString()})
        EXPECT_EQ(tree.SetPath(bad), u"指定されたディレクトリは存在しません。"_s);

    std::filesystem::remove_all(root / "hidden");
    QTreeWidgetItem* hidden = tree.selectedItems().first()->child(4);
    hidden->setExpanded(true);
    EXPECT_EQ(hidden->childCount(), 0);
    QTest::keyClick(&tree, Qt::Key_Down);
    EXPECT_EQ(std::exchange(changes, 0), 1);
    EXPECT_EQ(form.Path(), top + u"/A/"_s);
    QTest::mouseClick(form.findChild<QPushButton*>(u"cmdRefresh"_s), Qt::LeftButton);
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(ok.isEnabled() || !form.Path().isEmpty());
    // The toolkit could not remove the name that is not UTF-8.
    std::filesystem::remove_all(root);
}

} // namespace
