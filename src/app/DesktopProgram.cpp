#include "DesktopProgram.h"

#include "domain/FenrowModelContainer.h"
#include "domain/FenrowStore.h"
#include "domain/SystemClock.h"
#include "shell/ProcessEntry.h"

#include <QApplication>
#include <QMainWindow>
#include <QTextStream>

namespace fenrow::DesktopProgram {

int run(QApplication &application)
{
    ProcessEntry::prepare(application);
    static SystemClock clock;
    QString fatal;
    auto store = FenrowModelContainer::openStore(application.arguments(), clock, LocalCalendar(), &fatal);
    if (!store) {
        QTextStream(stderr) << fatal << '\n';
        return 1;
    }
    QMainWindow window;
    window.show();
    return application.exec();
}

} // namespace fenrow::DesktopProgram
