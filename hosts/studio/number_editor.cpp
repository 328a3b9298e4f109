// A slider and the number that it stands at.
// SPDX-License-Identifier: MIT
#include "number_editor.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QSlider>
#include <algorithm>
#include <cmath>

namespace studio {
namespace {

constexpr int kFineSteps = 1000;  // of a slider for a number with decimals

}  // namespace

NumberEditor::NumberEditor(const Argument& argument, const EditorHints& hints, QWidget* parent)
    : ArgumentEditor(parent), isInteger_(argument.kind != PIXVANE_DOUBLE), box_(new QDoubleSpinBox) {
    const double widest = isInteger_ ? 2147483647.0 : 1e6;
    const bool ranged = argument.has_range != 0;
    box_->setDecimals(isInteger_ ? 0 : 3);
    box_->setRange(ranged ? std::max(argument.minimum, -widest) : -widest,
                   ranged ? std::min(argument.maximum, widest) : widest);
    box_->setSingleStep(isInteger_ ? 1 : 0.05);
    box_->setKeyboardTracking(false);
    box_->setAlignment(Qt::AlignRight);
    const char* sample = hints.isNarrow ? "-000" : "-00000";
    box_->setFixedWidth(fontMetrics().horizontalAdvance(QLatin1String(sample)) + 40);
    box_->setAccessibleName(hints.label);
    setFocusProxy(box_);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(hints.isNarrow ? 6 : 10);
    if (argument.has_slider != 0) {
        least_ = argument.slider_minimum;
        most_ = hints.sliderMaximum > 0 ? hints.sliderMaximum : argument.slider_maximum;
        isCurved_ = !isInteger_ && least_ > 0 && most_ / least_ >= 20;
        slider_ = new QSlider(Qt::Horizontal);
        if (isInteger_)
            slider_->setRange(static_cast<int>(least_), static_cast<int>(most_));
        else
            slider_->setRange(0, kFineSteps);
        slider_->setPageStep(std::max(1, (slider_->maximum() - slider_->minimum()) / 10));
        slider_->setMinimumWidth(hints.isNarrow ? 60 : 150);
        slider_->setAccessibleName(hints.label);
        row->addWidget(slider_, 1);
        connect(slider_, &QSlider::valueChanged, this, [this](int position) {
            const QSignalBlocker quiet(box_);
            box_->setValue(number_at(position));
            emit edited();
        });
    } else {
        row->addStretch(1);
    }
    row->addWidget(box_);
    connect(box_, &QDoubleSpinBox::valueChanged, this, [this](double number) {
        if (slider_ != nullptr) {
            const QSignalBlocker quiet(slider_);
            slider_->setValue(position_of(number));
        }
        emit edited();
    });
}

QVariant NumberEditor::value() const {
    if (isInteger_) return static_cast<int>(std::lround(box_->value()));
    return box_->value();
}

void NumberEditor::set_value(const QVariant& value) {
    const QSignalBlocker quietBox(box_);
    box_->setValue(value.toDouble());
    if (slider_ == nullptr) return;
    const QSignalBlocker quietSlider(slider_);
    slider_->setValue(position_of(box_->value()));
}

int NumberEditor::position_of(double number) const {
    const double inside = std::clamp(number, least_, most_);
    if (isInteger_) return static_cast<int>(std::lround(inside));
    const double part = isCurved_ ? std::log(inside / least_) / std::log(most_ / least_)
                                  : (inside - least_) / (most_ - least_);
    return static_cast<int>(std::lround(part * kFineSteps));
}

double NumberEditor::number_at(int position) const {
    if (isInteger_) return position;
    const double part = static_cast<double>(position) / kFineSteps;
    const double number =
        isCurved_ ? least_ * std::pow(most_ / least_, part) : least_ + part * (most_ - least_);
    return std::round(number * 100) / 100;
}

}  // namespace studio
