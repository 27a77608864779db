#ifndef VEL_QT_WIDGETS_CMWFILTERVOCABULARY_P_H
#define VEL_QT_WIDGETS_CMWFILTERVOCABULARY_P_H

#include <QtCore/QString>
#include <QtCore/QStringList>

// The texts that the filter editor, the filter proxy and the picker show or
// compare, and the one place that passes them through MW_GetTranslation.
namespace VelFilterVocabulary {

// Translation contexts: one fixed identifier per source module.
extern const char *const filterContext;
extern const char *const pickerContext;

enum Operator { OperatorAnd = 0, OperatorOr = 1 };

enum Comparator {
    GreaterOrEqual = 0,
    SmallerOrEqual,
    Greater,
    Smaller,
    Equal,
    NotEqual,
    Empty,
    NotEmpty,
    ComparatorCount
};

// MW_GetTranslation(text, context) as a QString.
QString translate(const char *text, const char *context);

// "AND", "OR", translated once; shared by the editor's pickers and the
// proxy's evaluation so that both always agree.
const QStringList &operatorTexts();
// The eight comparator texts in picker order (the Comparator enumeration).
const QStringList &comparatorTexts();

// The editor's five header texts, translated at each call.
QStringList headerTexts();

// The picker's placeholder, translated at each call.
QString selectText();

} // namespace VelFilterVocabulary

#endif // VEL_QT_WIDGETS_CMWFILTERVOCABULARY_P_H
