// The file behind the picture: opened, saved, closed, and not lost by mistake.
// SPDX-License-Identifier: MIT
#include "document.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>

#include "formats.h"
#include "save_dialog.h"

namespace studio {
namespace {

// Of a file of this size decoding is worth a word before it starts.
constexpr qint64 kLongToRead = 2000000;

}  // namespace

Document::Document(CommandRunner& runner, QWidget& window)
    : QObject(&window),
      runner_(runner),
      window_(window),
      lastQuality_(runner.picture().view().JpegQuality()) {}

QString Document::title() const {
    if (!path_.isEmpty()) return QFileInfo(path_).fileName();
    return runner_.picture().is_empty() ? QString() : tr("New picture");
}

bool Document::is_modified() const {
    return !runner_.picture().is_empty() && runner_.picture().view().Modified();
}

void Document::open() {
    const QString start = path_.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)
                                          : QFileInfo(path_).absolutePath();
    const QString chosen = QFileDialog::getOpenFileName(&window_, tr("Open a picture"), start);
    if (!chosen.isEmpty()) open(chosen);
}

bool Document::open(const QString& path) {
    if (!may_be_left()) return false;
    PixvaneWidget& view = runner_.picture().view();
    // A file that can't be read must not cost the picture that is open; finding out takes decoding it.
    bool isRead = view.IsEmpty() || view.IsImageFile(path);
    if (isRead) {
        const auto load = [&] { isRead = view.LoadImage(path); };
        if (QFileInfo(path).size() > kLongToRead)
            runner_.waiting(tr("Opening %1").arg(QFileInfo(path).fileName()), load);
        else
            load();
        path_ = isRead ? QFileInfo(path).absoluteFilePath() : QString();
        emit renamed();
        runner_.picture().announce();
    }
    if (isRead) {
        emit opened(path_);
        return true;
    }
    emit failed(path);
    QMessageBox::warning(&window_, tr("Open"),
                         QFileInfo::exists(path) ? tr("%1 is no picture that can be read.").arg(path)
                                                 : tr("There is no file %1.").arg(path));
    return false;
}

bool Document::save() {
    const Format* format = format_of(path_);
    // Formats that can be read only are saved under another name.
    if (path_.isEmpty() || format == nullptr) return save_as();
    return write(path_, format->type, lastQuality_);
}

bool Document::save_as() {
    if (runner_.picture().is_empty()) return false;
    SaveDialog dialog(runner_.picture(), path_, &window_);
    if (dialog.exec() != QDialog::Accepted) return false;
    return write(dialog.path(), dialog.format().type, dialog.quality());
}

bool Document::write(const QString& path, int type, int quality) {
    PixvaneWidget& view = runner_.picture().view();
    bool isSaved = false;
    const auto save = [&] {
        view.setJpegQuality(quality);
        isSaved = view.SaveImage(path, type);
    };
    runner_.waiting(tr("Saving %1").arg(QFileInfo(path).fileName()), save);
    if (!isSaved) {
        QMessageBox::warning(&window_, tr("Save"), tr("%1 can't be written.").arg(path));
        return false;
    }
    lastQuality_ = quality;
    path_ = QFileInfo(path).absoluteFilePath();
    emit renamed();
    emit opened(path_);
    emit told(tr("Saved %1, %2").arg(QFileInfo(path).fileName(), size_text(QFileInfo(path).size())));
    runner_.picture().announce();
    return true;
}

bool Document::close() {
    if (!may_be_left()) return false;
    runner_.picture().view().Empty();
    path_.clear();
    emit renamed();
    runner_.picture().announce();
    return true;
}

bool Document::may_be_left() {
    if (!is_modified()) return true;
    QMessageBox question(QMessageBox::Question, tr("Unsaved changes"),
                         tr("Save the changes to %1?").arg(title()),
                         QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, &window_);
    question.setObjectName(QStringLiteral("unsavedChanges"));
    question.setInformativeText(tr("They are lost if they aren't saved."));
    question.setDefaultButton(QMessageBox::Save);
    switch (question.exec()) {
        case QMessageBox::Save:
            return save();
        case QMessageBox::Discard:
            return true;
        default:
            return false;
    }
}

}  // namespace studio
