// The file behind the picture: sizes before saving, unsaved changes, dropped and recent files.
// SPDX-License-Identifier: MIT
#include <QAbstractButton>
#include <QFileInfo>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QUrl>

#include "formats.h"
#include "size_probe.h"
#include "studio_window.h"

namespace studio {
namespace {

class Documents : public StudioWindow {
protected:
    QString saved(const QString& name, int type = 4) {
        const QString path = folder.filePath(name);
        EXPECT_TRUE(view().SaveImage(path, type));
        return path;
    }
    /// Presses a button of the question that comes up within `act`.
    void answer(QMessageBox::StandardButton button, const std::function<void()>& act) {
        bool isAsked = false;
        QTimer ticks;
        QObject::connect(&ticks, &QTimer::timeout, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr || isAsked) return;
            isAsked = true;
            box->button(button)->click();
        });
        ticks.start(1);
        act();
        EXPECT_TRUE(isAsked);
    }

    QTemporaryDir folder;
};

TEST_F(Documents, TheSizeThatIsToldIsTheSizeOfTheFile) {
    SizeProbe probe(view().Picture());
    qint64 told = 0;
    int answers = 0;
    QObject::connect(&probe, &SizeProbe::measured, [&](qint64 bytes) {
        told = bytes;
        ++answers;
    });
    for (const Format& format : formats()) {
        for (const int quality : {10, 95}) {
            const int before = answers;
            probe.request(format.type, quality);
            wait_until([&] { return answers > before; });
            view().setJpegQuality(quality);
            EXPECT_EQ(told, QFileInfo(saved(QStringLiteral("file"), format.type)).size())
                << format.name.toStdString();
        }
    }
    // Requests that came too late are not answered.
    const int before = answers;
    for (int quality = 0; quality <= 100; ++quality) probe.request(1, quality);
    wait_until([&] { return answers > before; });
    view().setJpegQuality(100);
    EXPECT_EQ(told, QFileInfo(saved(QStringLiteral("file"), 1)).size());
    EXPECT_EQ(answers, before + 1);
}

TEST_F(Documents, UnsavedChangesAreNotLostUnasked) {
    const QString first = saved(QStringLiteral("first.png"));
    ASSERT_TRUE(window.document().open(first));
    view().Invert();
    const QByteArray edited = view().Picture();
    answer(QMessageBox::Cancel, [&] { EXPECT_FALSE(window.document().open(first)); });
    answer(QMessageBox::Cancel, [&] { EXPECT_FALSE(window.close()); });
    EXPECT_TRUE(view().Picture() == edited);
    EXPECT_TRUE(window.isWindowModified());

    // Saved to where it came from, without a question for the name.
    answer(QMessageBox::Save, [&] { EXPECT_TRUE(window.document().close()); });
    EXPECT_TRUE(view().IsEmpty());
    ASSERT_TRUE(window.document().open(first));
    EXPECT_TRUE(view().Picture() == edited);

    view().Invert();
    answer(QMessageBox::Discard, [&] { EXPECT_TRUE(window.document().close()); });
    ASSERT_TRUE(window.document().open(first));
    EXPECT_TRUE(view().Picture() == edited);
    EXPECT_TRUE(window.document().close()) << "nothing to ask";
}

TEST_F(Documents, AFileThatIsNoPictureLeavesTheOneThatIsOpen) {
    const QString first = saved(QStringLiteral("first.png"));
    ASSERT_TRUE(window.document().open(first));
    QFile text(folder.filePath(QStringLiteral("text.png")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("no picture");
    text.close();
    for (const QString& path : {text.fileName(), folder.filePath(QStringLiteral("nowhere.png"))})
        answer(QMessageBox::Ok, [&] { EXPECT_FALSE(window.document().open(path)); });
    EXPECT_EQ(view().ImageWidth(), kWidth);
    EXPECT_EQ(window.document().path(), first);
    EXPECT_EQ(RecentFiles::paths().front(), first);
}

TEST_F(Documents, DroppedFilesAreOpened) {
    const QString first = saved(QStringLiteral("first & last.png"));
    view().SetNewSize(30, 20);
    const QString second = saved(QStringLiteral("second.png"));
    ASSERT_TRUE(window.document().open(first));
    EXPECT_TRUE(pixvane::test::send_drop(view(), {QUrl::fromLocalFile(second)}));
    wait_until([&] { return window.document().path() == second; });
    EXPECT_EQ(view().ImageWidth(), 30);
    ASSERT_TRUE(window.document().close());
    EXPECT_TRUE(pixvane::test::send_drop(window, {QUrl::fromLocalFile(second)}));
    wait_until([&] { return window.document().path() == second; });
    EXPECT_EQ(RecentFiles::paths().mid(0, 2), QStringList({second, first}));
}

}  // namespace
}  // namespace studio
