#pragma once

#include <QWidget>

namespace fenrow {

// What the detail area shows while no flow is chosen.
class EmptyDetailView : public QWidget {
    Q_OBJECT

public:
    explicit EmptyDetailView(QWidget *parent = nullptr);
};

} // namespace fenrow
