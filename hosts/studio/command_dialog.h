// The dialog of a command, made from its row: an editor for each argument, and a live preview in the view.
// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <vector>

#include "argument_editors.h"
#include "live_preview.h"

class QFormLayout;

namespace studio {

/// Stays beside the picture, which can be zoomed and moved meanwhile. Where the command wants a point, a
/// click in the picture gives it.
class CommandDialog : public QDialog {
    Q_OBJECT

public:
    CommandDialog(CommandRunner& runner, const Member& command, QWidget* parent);

    const Member& command() const { return command_; }
    QVariantList values() const;

signals:
    /// The view shows something else than before.
    void shown();

protected:
    void done(int result) override;

private:
    void add_editors(QFormLayout& form);
    void add_buttons(QLayout& column);
    void reset();
    void take_point(int x, int y);
    ArgumentEditor* editor_of(const char* argument) const;
    QVariant start_value(const Argument& argument) const;

    CommandRunner& runner_;
    const Member& command_;
    LivePreview preview_;
    std::vector<ArgumentEditor*> editors_;
};

}  // namespace studio
