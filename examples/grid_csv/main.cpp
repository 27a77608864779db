// Shows a CSV file in CMwHierarchicalGridView through CMwGridTableModel.
// Captions such as "Water|Temperature" become two header levels; right-click
// a column header to group by it, select rows to see their statistics.
//
//   grid_csv [--quit] [file.csv]
//
// With --quit (or on the offscreen platform) it loads the file, runs the
// event loop once and leaves; that is how the test suite runs it.
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

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
    if (!model->loadCsv(fileName))
        return 1;
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
