#pragma once

#include "ReadyWords.h"

#include <QColor>
#include <QSet>
#include <QUuid>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace fenrow {

// What the popup draws: the list's state, the snapshot when there is one,
// the tasks ticked here that Fenrow has not taken yet, and a notice when
// something the user asked for failed.
struct ReadyPopupContent {
    ReadyListState state = ReadyListState::notWritten;
    std::optional<ReadySnapshot> snapshot;
    QSet<QUuid> ticked;
    QDate today;
    QString notice;
};

// The list that opens from the tray: a tick box per task, the title, its
// flow, its due day; then the ways into Fenrow.
class ReadyPopup : public QWidget {
    Q_OBJECT

public:
    explicit ReadyPopup(QWidget *parent = nullptr);

    void present(const ReadyPopupContent &content);
    // Where the popup goes for a tray icon at `anchor`: below it when it
    // fits, otherwise above, and always inside `screen`.
    static QRect placement(const QSize &size, const QRect &anchor, const QRect &screen);

signals:
    void tickRequested(const QUuid &task);
    void openFenrowRequested();
    void quickCaptureRequested();
    void openReadyRequested();
    void quitRequested();

private:
    QWidget *taskRow(const ReadySnapshot::Item &item, bool ticked, const QDate &today, const QColor &accent);
    QWidget *m_body = nullptr;
    QVBoxLayout *m_layout = nullptr;
};

} // namespace fenrow
