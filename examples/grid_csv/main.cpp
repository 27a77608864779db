// Shows a CSV file in CMwHierarchicalGridView through CMwGridTableModel.
// Captions such as "Water|Temperature" become two header levels; right-click
// a column header to group by it, select rows to see their statistics.
//
//   grid_csv [file.csv]
#include <vel_qt_widgets/CMwHierarchicalGridView.h>

#include <QtWidgets/QApplication>

int main(int argc, char *argv[])
{
    QApplication app(argc, argv);
    const QString fileName = argc > 1 ? QString::fromLocal8Bit(argv[1])
                                      : QStringLiteral(GRID_CSV_SAMPLE);

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
    return app.exec();
}
