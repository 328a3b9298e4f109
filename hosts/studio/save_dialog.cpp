// Asks where and how to save a picture, and tells how large the file will be.
// SPDX-License-Identifier: MIT
#include "save_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QStandardPaths>
#include <QToolButton>

#include "icons.h"

namespace studio {

SaveDialog::SaveDialog(Picture& picture, const QString& path, QWidget* parent)
    : QDialog(parent),
      probe_(picture.view().Picture()),
      sourceBytes_(QFileInfo(path).size()),
      name_(new QLineEdit),
      folderLabel_(new QLabel),
      format_(new QComboBox),
      slider_(new QSlider(Qt::Horizontal)),
      number_(new QSpinBox),
      qualityLabel_(new QLabel(tr("&Quality"))),
      size_(new QLabel) {
    setWindowTitle(tr("Save as"));
    setObjectName(QStringLiteral("saveDialog"));
    for (const Format& format : formats()) format_->addItem(format.name, format.type);
    slider_->setRange(0, 100);
    number_->setRange(0, 100);
    slider_->setValue(picture.view().JpegQuality());
    number_->setValue(slider_->value());
    name_->setAccessibleName(tr("File name"));
    format_->setAccessibleName(tr("Format"));
    slider_->setAccessibleName(tr("Quality"));
    number_->setAccessibleName(tr("Quality"));

    auto* form = new QFormLayout(this);
    form->setContentsMargins(18, 16, 18, 16);
    form->setHorizontalSpacing(14);
    form->setVerticalSpacing(10);
    form->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* nameLabel = new QLabel(tr("&Name"));
    nameLabel->setBuddy(name_);
    form->addRow(nameLabel, path_rows());
    form->addRow(tr("&Format"), format_);
    static_cast<QLabel*>(qualityLabel_)->setBuddy(slider_);
    form->addRow(qualityLabel_, quality_row());
    form->addRow(tr("Size"), size_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel);
    for (QAbstractButton* button : buttons->buttons()) button->setIcon({});
    form->addRow(buttons);
    setMinimumWidth(460);

    connect(buttons, &QDialogButtonBox::accepted, this, &SaveDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SaveDialog::reject);
    connect(slider_, &QSlider::valueChanged, number_, &QSpinBox::setValue);
    connect(number_, &QSpinBox::valueChanged, slider_, &QSlider::setValue);
    connect(slider_, &QSlider::valueChanged, this, &SaveDialog::ask_size);
    connect(format_, &QComboBox::activated, this, &SaveDialog::format_chosen);
    connect(&probe_, &SizeProbe::measured, this, &SaveDialog::show_size);

    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    take_path(path.isEmpty() ? QDir(pictures).filePath(tr("picture") + QStringLiteral(".png")) : path);
    name_->setFocus();
    name_->setSelection(0, static_cast<int>(QFileInfo(name_->text()).completeBaseName().size()));
}

QString SaveDialog::path() const {
    QString name = name_->text().trimmed();
    // The format that is shown is the one that is written.
    if (format_of(name) != &format()) name += QLatin1Char('.') + format().endings.front();
    return QDir(folder_).absoluteFilePath(name);
}

const Format& SaveDialog::format() const { return formats()[format_->currentIndex()]; }

int SaveDialog::quality() const { return slider_->value(); }

void SaveDialog::accept() {
    if (name_->text().trimmed().isEmpty()) return name_->setFocus();
    const QFileInfo target(path());
    if (target.exists() &&
        QMessageBox::question(this, windowTitle(),
                              tr("%1 is there already. Replace it?").arg(target.fileName())) !=
            QMessageBox::Yes)
        return;
    QDialog::accept();
}

QLayout* SaveDialog::path_rows() {
    auto* browseButton = new QToolButton;
    browseButton->setIcon(icon(Icon::Open));
    browseButton->setToolTip(tr("Choose a folder and a name"));
    browseButton->setAccessibleName(browseButton->toolTip());
    connect(browseButton, &QToolButton::clicked, this, &SaveDialog::browse);
    auto* row = new QHBoxLayout;
    row->addWidget(name_, 1);
    row->addWidget(browseButton);
    auto* rows = new QVBoxLayout;
    rows->setSpacing(4);
    rows->addLayout(row);
    QPalette soft = folderLabel_->palette();
    soft.setColor(QPalette::WindowText, soft.color(QPalette::PlaceholderText));
    folderLabel_->setPalette(soft);
    rows->addWidget(folderLabel_);
    return rows;
}

QLayout* SaveDialog::quality_row() {
    auto* row = new QHBoxLayout;
    row->setSpacing(10);
    row->addWidget(slider_, 1);
    row->addWidget(number_);
    return row;
}

void SaveDialog::browse() {
    // The question whether to replace a file comes when the dialog is accepted.
    const QString chosen = QFileDialog::getSaveFileName(this, windowTitle(), path(), {}, nullptr,
                                                        QFileDialog::DontConfirmOverwrite);
    if (!chosen.isEmpty()) take_path(chosen);
}

void SaveDialog::take_path(const QString& path) {
    const QFileInfo file(path);
    folder_ = file.absolutePath();
    name_->setText(file.fileName());
    folderLabel_->setText(fontMetrics().elidedText(tr("in %1").arg(folder_), Qt::ElideMiddle, 340));
    folderLabel_->setToolTip(folder_);
    if (const Format* known = format_of(path))
        format_->setCurrentIndex(static_cast<int>(known - &formats()[0]));
    format_chosen();
}

void SaveDialog::format_chosen() {
    if (format_of(name_->text()) != &format())
        name_->setText(QFileInfo(name_->text()).completeBaseName() + QLatin1Char('.') +
                       format().endings.front());
    for (QWidget* part : {qualityLabel_, static_cast<QWidget*>(slider_), static_cast<QWidget*>(number_)})
        part->setEnabled(format().hasQuality);
    ask_size();
}

void SaveDialog::ask_size() {
    size_->setText(tr("…"));
    probe_.request(format().type, quality());
}

void SaveDialog::show_size(qint64 bytes) {
    // What the file holds besides pixels is not counted, so it is "about".
    if (bytes < 0)
        size_->setText(tr("can't be saved in this format"));
    else if (sourceBytes_ > 0)
        size_->setText(
            tr("about %1; the file that was opened has %2").arg(size_text(bytes), size_text(sourceBytes_)));
    else
        size_->setText(tr("about %1").arg(size_text(bytes)));
}

}  // namespace studio
