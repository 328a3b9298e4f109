// Asks where and how to save a picture, and tells how large the file will be.
// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>

#include "formats.h"
#include "picture.h"
#include "size_probe.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSlider;
class QSpinBox;

namespace studio {

class SaveDialog : public QDialog {
    Q_OBJECT

public:
    /// Starts with `path`, whose ending chooses the format; it may be empty.
    SaveDialog(Picture& picture, const QString& path, QWidget* parent);

    QString path() const;
    const Format& format() const;
    int quality() const;

protected:
    void accept() override;

private:
    QLayout* path_rows();
    QLayout* quality_row();
    void browse();
    void take_path(const QString& path);
    void format_chosen();
    void ask_size();
    void show_size(qint64 bytes);

    SizeProbe probe_;
    qint64 sourceBytes_;  ///< of the file that the picture came from; 0 if there is none
    QString folder_;
    QLineEdit* name_;
    QLabel* folderLabel_;
    QComboBox* format_;
    QSlider* slider_;
    QSpinBox* number_;
    QWidget* qualityLabel_;
    QLabel* size_;
};

}  // namespace studio
