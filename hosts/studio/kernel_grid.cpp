// A square of integers: the weights of a kernel of 3 x 3 or 5 x 5.
// SPDX-License-Identifier: MIT
#include "kernel_grid.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QVBoxLayout>

namespace studio {
namespace {

constexpr int kLargest = 9999;

QList<int> identity(int side) {
    QList<int> weights(side * side, 0);
    weights[side * side / 2] = 1;
    return weights;
}

}  // namespace

KernelGrid::KernelGrid(QWidget* parent)
    : QWidget(parent), grid_(new QGridLayout), sides_(new QButtonGroup(this)) {
    auto* choice = new QHBoxLayout;
    for (const int side : {3, 5}) {
        auto* button = new QRadioButton(tr("%1 × %1").arg(side));
        sides_->addButton(button, side);
        choice->addWidget(button);
    }
    choice->addStretch();
    grid_->setSpacing(4);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(0, 0, 0, 0);
    all->addLayout(choice);
    all->addLayout(grid_);
    fill(3, identity(3));
    connect(sides_, &QButtonGroup::idClicked, this, &KernelGrid::set_side);
}

QList<int> KernelGrid::weights() const {
    QList<int> weights;
    for (int x = 0; x < side_; ++x) {
        for (int y = 0; y < side_; ++y)
            weights.append(cells_[static_cast<std::size_t>(y * side_ + x)]->value());
    }
    return weights;
}

void KernelGrid::set_weights(const QList<int>& weights) {
    if (weights.size() == 9 || weights.size() == 25)
        fill(weights.size() == 9 ? 3 : 5, weights);
    else
        fill(3, identity(3));
}

/// Keeps the middle of the weights that are there.
void KernelGrid::set_side(int side) {
    if (side == side_) return;
    const QList<int> old = weights();
    const int oldSide = side_;
    const int shift = (side - oldSide) / 2;
    QList<int> next(side * side, 0);
    for (int x = 0; x < side; ++x) {
        for (int y = 0; y < side; ++y) {
            const int fromX = x - shift, fromY = y - shift;
            if (fromX >= 0 && fromX < oldSide && fromY >= 0 && fromY < oldSide)
                next[x * side + y] = old[fromX * oldSide + fromY];
        }
    }
    fill(side, next);
    emit edited();
}

void KernelGrid::fill(int side, const QList<int>& weights) {
    if (side != side_) {
        for (QSpinBox* cell : cells_) cell->deleteLater();
        cells_.clear();
        side_ = side;
        for (int i = 0; i < side * side; ++i) {
            auto* cell = new QSpinBox;
            cell->setRange(-kLargest, kLargest);
            cell->setButtonSymbols(QAbstractSpinBox::NoButtons);
            cell->setAlignment(Qt::AlignCenter);
            cell->setMinimumWidth(48);
            cell->setKeyboardTracking(false);
            cell->setAccessibleName(tr("Weight in row %1, column %2").arg(i / side + 1).arg(i % side + 1));
            grid_->addWidget(cell, i / side, i % side);
            cells_.push_back(cell);
            connect(cell, &QSpinBox::valueChanged, this, &KernelGrid::edited);
        }
        sides_->button(side)->setChecked(true);
    }
    for (int x = 0; x < side; ++x) {
        for (int y = 0; y < side; ++y) {
            QSpinBox* cell = cells_[static_cast<std::size_t>(y * side + x)];
            const QSignalBlocker quiet(cell);
            cell->setValue(weights[x * side + y]);
        }
    }
}

}  // namespace studio
