#pragma once

#include "CanvasPanel.h"
#include "domain/FlowProgress.h"

class QLabel;

namespace fenrow {

// The flow's name over how far it has come: done of all, and how many are
// ready now, with a thin bar. Floats at the canvas's top left corner.
class CanvasProgressReadout : public CanvasPanel {
    Q_OBJECT

public:
    static constexpr int maximumWidth = 420;

    explicit CanvasProgressReadout(CanvasAppearance &appearance, QWidget *parent = nullptr);

    void setFlow(const QString &name, const FlowProgress &progress, qsizetype readyCount);
    // The short form of the numbers, for a narrow canvas.
    void setCompact(bool compact);
    // The most the panel may take, shadow included; a longer name is cut.
    void setRoom(int width);

    static QString text(const FlowProgress &progress, qsizetype readyCount, bool compact);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();

    QLabel *m_name = nullptr;
    QLabel *m_progress = nullptr;
    QString m_fullName;
    FlowProgress m_counts;
    qsizetype m_ready = 0;
    bool m_compact = false;
    int m_room = maximumWidth;
};

} // namespace fenrow
