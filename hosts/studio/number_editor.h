// A slider and the number that it stands at.
// SPDX-License-Identifier: MIT
#pragma once

#include "argument_editors.h"

class QDoubleSpinBox;
class QSlider;

namespace studio {

/// The slider has the range that the row gives for it; the number takes whatever the member accepts.
class NumberEditor final : public ArgumentEditor {
    Q_OBJECT

public:
    NumberEditor(const Argument& argument, const EditorHints& hints, QWidget* parent);

    QVariant value() const override;
    void set_value(const QVariant& value) override;

private:
    int position_of(double number) const;
    double number_at(int position) const;

    bool isInteger_;
    bool isCurved_ = false;  ///< the slider moves by factors
    double least_ = 0, most_ = 0;
    QSlider* slider_ = nullptr;  ///< null where the row gives no range
    QDoubleSpinBox* box_;
};

}  // namespace studio
