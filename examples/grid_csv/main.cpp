// Shows a CSV file in CMwHierarchicalGridView through CMwGridTableModel.
// Captions such as "Water|Temperature" become two header levels; right-click
// a column header to group by it, select rows to see their statistics.
// A large file shows a progress dialog while it loads; its Cancel button
// stops the load.
//
//   grid_csv [--quit] [file.csv]
//
// With --quit (or on the offscreen platform) it loads the file, runs the
// event loop once and leaves; that is how the test suite runs it.
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QProgressDialog>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    QStringList arguments = app.arguments().mid(1);
    const bool quit = arguments.removeAll(QStringLiteral("--quit")) > 0
        || QGuiApplication::platformName() == QLatin1String("offscreen");
    const QString fileName
        = arguments.isEmpty() ? QStringLiteral(GRID_CSV_SAMPLE) : arguments.first();

    CMwHierarchicalGridView grid;
    auto *model = new CMwGridTableModel(&grid);
    // The load runs on this thread; a modal progress dialog processes events
    // when its value is set, so its Cancel button is heard between blocks.
    // It shows itself only when the load takes longer than its minimum duration.
    QProgressDialog progress(
        QObject::tr("Loading %1").arg(fileName), QObject::tr("Cancel"), 0, 1000);
    progress.setWindowModality(Qt::ApplicationModal);
    QObject::connect(model, &CMwGridTableModel::csvReadProgress, &progress,
        [&progress](qint64 read, qint64 total) {
            if (total > 0)
                progress.setValue(int(1000 * read / total));
        });
    QObject::connect(
        &progress, &QProgressDialog::canceled, model, &CMwGridTableModel::cancelCsvRead);
    const bool loaded = model->loadCsv(fileName);
    const bool cancelled = progress.wasCanceled();
    progress.reset();
    if (!loaded)
        return cancelled ? 0 : 1;
    grid.setModel(model);
    QObject::connect(grid.horizontalHeader(), SIGNAL(groupByColumn(mw_int32)), model,
        SLOT(groupByColumn(mw_int32)));

    grid.setWindowTitle(fileName);
    grid.resize(760, 480);
    grid.show();
    grid.onResizeToContents();
    if (quit)
        QTimer::singleShot(0, &app, &QCoreApplication::quit);
    return app.exec();
}
