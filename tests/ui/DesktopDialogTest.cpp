#include "app/UriList.h"
#include "tests/support/TemporaryFolder.h"
#include "ui/panels/DialogAnswer.h"
#include "ui/panels/FilePanel.h"
#include "ui/panels/WindowPanels.h"

#include <QApplication>
#include <QTimer>

#include <gtest/gtest.h>

#include <fstream>

namespace tallyfold {

namespace {

namespace fs = std::filesystem;
using Paths = std::vector<fs::path>;

/// Panels on a desktop that gives `urls` whatever it is asked.
class DesktopDialogTest : public testing::Test {
protected:
    DesktopDialogTest()
        : m_state(QString::fromStdString((folder / "state.ini").native())),
          m_panels(m_state, [this](const OpenPanel &panel, const fs::path &begin, QWidget *) {
              asked.push_back(panel);
              begun.push_back(begin);
              return urls;
          })
    {
    }

    fs::path file(const std::string &name)
    {
        fs::create_directories((folder / name).parent_path());
        std::ofstream(folder / name) << "x";
        return folder / name;
    }

    /// As most dialogs give it: bytes that are no text are gone.
    QUrl textOf(const fs::path &path)
    {
        return QUrl::fromLocalFile(QString::fromUtf8(path.native().c_str()));
    }

    /// As others do, every byte encoded.
    QUrl bytesOf(const fs::path &path)
    {
        return QUrl::fromEncoded(fileUri(path));
    }

    PanelAnswer chosen(const QList<QUrl> &given, const OpenPanel &panel = OpenPanel::forFiles())
    {
        urls = given;
        return m_panels.run(panel);
    }

    tests::TemporaryFolder folder;
    std::optional<QList<QUrl>> urls;
    std::vector<OpenPanel> asked;
    Paths begun;
    WindowState m_state;
    WindowPanels m_panels;
};

} // namespace

TEST_F(DesktopDialogTest, WhatTheDesktopGivesIsChosenInItsOrder)
{
    const Paths files{file("b.pdf"), file("a & b #1 100%.pdf"), file("sub/ä.pdf")};
    EXPECT_EQ(chosen({textOf(files[0]), textOf(files[1]), textOf(files[2])}), (PanelAnswer{files, {}}));
    EXPECT_EQ(asked, std::vector{OpenPanel::forFiles()});
}

TEST_F(DesktopDialogTest, EveryPanelIsTheDesktopsWhereItBringsOne)
{
    const fs::path inner = file("inner/a.pdf").parent_path();
    for (const OpenPanel &panel : {OpenPanel::forFolder(), OpenPanel::forOutputFolder()}) {
        EXPECT_EQ(chosen({textOf(inner)}, panel), (PanelAnswer{{inner}, {}}));
        EXPECT_EQ(asked.back(), panel);
    }
}

TEST_F(DesktopDialogTest, CancellingChoosesNothingAndAsksNobodyElse)
{
    for (const OpenPanel &panel :
         {OpenPanel::forFiles(), OpenPanel::forFolder(), OpenPanel::forOutputFolder()}) {
        EXPECT_EQ(chosen({}, panel), PanelAnswer());
    }
}

TEST_F(DesktopDialogTest, ADialogBeginsWhereTheLastOneEndedAndFoldersOfCopiesApart)
{
    const fs::path source = file("sources/a.pdf");
    const fs::path output = file("outputs/one/b.pdf").parent_path();
    (void)chosen({textOf(source)});
    (void)chosen({textOf(output)}, OpenPanel::forOutputFolder());
    (void)chosen({});
    (void)chosen({}, OpenPanel::forFolder());
    (void)chosen({}, OpenPanel::forOutputFolder());
    EXPECT_EQ(begun, (Paths{"", "", folder / "sources", folder / "sources", folder / "outputs"}));
}

TEST_F(DesktopDialogTest, ANameThatIsNoTextIsTheFileThatReadsLikeIt)
{
    const Paths files{file("odd\xff.pdf"), file("f\xc3\x28older/in\xe9\xe9side.pdf")};
    EXPECT_EQ(chosen({textOf(files[0]), textOf(files[1])}), (PanelAnswer{files, {}}));
    EXPECT_EQ(chosen({bytesOf(files[0]), bytesOf(files[1])}), (PanelAnswer{files, {}}));
}

TEST_F(DesktopDialogTest, OfTwoThatReadAlikeNeitherIsGuessed)
{
    const fs::path one = file("odd\xff.pdf");
    const fs::path other = file("odd\xfe.pdf");
    const fs::path plain = file("plain.pdf");
    EXPECT_EQ(chosen({textOf(one), textOf(plain)}),
              (PanelAnswer{{plain}, {QStringLiteral("odd\ufffd.pdf")}}));
    EXPECT_EQ(chosen({bytesOf(other)}), (PanelAnswer{{other}, {}}));
}

TEST_F(DesktopDialogTest, ANameThatReallyHasTheCharacterIsNotGuessedBesideOneThatReadsLikeIt)
{
    const fs::path real = file("odd\xef\xbf\xbd.pdf");
    EXPECT_EQ(chosen({textOf(real)}), (PanelAnswer{{real}, {}}));
    file("odd\xff.pdf");
    EXPECT_EQ(chosen({textOf(real)}).lost, QStringList{QStringLiteral("odd\ufffd.pdf")});
}

TEST_F(DesktopDialogTest, FoldersThatReadAlikeAreToldApartByWhatIsInThem)
{
    const fs::path wanted = file("f\xff/only here.pdf");
    file("f\xfe/other.pdf");
    EXPECT_EQ(chosen({textOf(wanted)}), (PanelAnswer{{wanted}, {}}));
}

TEST_F(DesktopDialogTest, WhatLeadsToNoFileIsLost)
{
    file("odd\xe9.pdf");
    const QUrl misread = QUrl::fromLocalFile(QString::fromStdString((folder / "oddé.pdf").native()));
    const QUrl remote(QStringLiteral("smb://server/share/a.pdf"));
    EXPECT_EQ(chosen({misread, remote}),
              (PanelAnswer{{}, {QStringLiteral("oddé.pdf"), QStringLiteral("smb://server/share/a.pdf")}}));
}

TEST_F(DesktopDialogTest, WithoutOneOfTheDesktopOurPanelTakesFoldersBesideFiles)
{
    for (const OpenPanel &panel : {OpenPanel::forFiles(), OpenPanel::forFolder()}) {
        file("sources/a.pdf");
        m_state.setBytes(QStringLiteral("panel/files"), QByteArray::fromStdString(folder / "."));
        QTimer::singleShot(0, [&panel] {
            auto *dialog = qobject_cast<FilePanel *>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            EXPECT_EQ(dialog->windowTitle(), panel.title);
            auto *list = dialog->findChild<QTreeView *>(QStringLiteral("contents"));
            list->setCurrentIndex(list->model()->index(0, 0));
            dialog->findChild<QPushButton *>(QStringLiteral("add"))->click();
        });
        urls = std::nullopt;
        EXPECT_EQ(m_panels.run(panel).chosen, Paths{folder / "." / "sources"});
    }
}

TEST(AskDesktop, NobodyIsAskedWhereThePlatformBringsNoDialog)
{
    for (const OpenPanel &panel :
         {OpenPanel::forFiles(), OpenPanel::forFolder(), OpenPanel::forOutputFolder()}) {
        EXPECT_EQ(askDesktop(panel, {}, nullptr), std::nullopt);
    }
}

} // namespace tallyfold
