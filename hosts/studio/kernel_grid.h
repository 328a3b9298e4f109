// A square of integers: the weights of a kernel of 3 x 3 or 5 x 5.
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSpinBox>
#include <QWidget>
#include <vector>

class QButtonGroup;
class QGridLayout;

namespace studio {

class KernelGrid : public QWidget {
    Q_OBJECT

public:
    explicit KernelGrid(QWidget* parent = nullptr);

    /// 9 or 25 weights, column by column, as kernels are handed over.
    QList<int> weights() const;
    /// Anything else than 9 or 25 weights gives the kernel that changes nothing.
    void set_weights(const QList<int>& weights);

signals:
    void edited();

private:
    void set_side(int side);
    void fill(int side, const QList<int>& weights);

    QGridLayout* grid_;
    QButtonGroup* sides_;
    std::vector<QSpinBox*> cells_;  ///< row by row
    int side_ = 0;
};

}  // namespace studio
