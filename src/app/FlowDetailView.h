#pragma once

#include <QUuid>
#include <QWidget>

class QLabel;

namespace fenrow {

class FenrowStore;
class ProgressStrip;

// The detail of one flow: its name and progress over an empty canvas
// ground. It keeps the flow's id and reads the record on every change, so
// it never holds on to a deleted flow.
class FlowDetailView : public QWidget {
    Q_OBJECT

public:
    explicit FlowDetailView(FenrowStore &store, QWidget *parent = nullptr);

    void showFlow(const QUuid &id);
    QUuid flowId() const { return m_flowId; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void refresh();

    FenrowStore &m_store;
    QUuid m_flowId;
    QLabel *m_name = nullptr;
    QLabel *m_progress = nullptr;
    ProgressStrip *m_bar = nullptr;
};

} // namespace fenrow
