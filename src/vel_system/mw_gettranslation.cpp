#include <vel_system/MW_GetTranslation.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QString>
#include <QtCore/QtDebug>

#include <mutex>
#include <string>
#include <unordered_set>

namespace {

// Every translation handed out is interned here. Nodes of an unordered_set
// never move, so the c_str() of an element stays valid; the set itself is
// never destroyed, so the pointers also outlive static destruction.
struct TranslationPool
{
    std::mutex mutex;
    std::unordered_set<std::wstring> texts;
};

TranslationPool &pool()
{
    static TranslationPool *instance = new TranslationPool;
    return *instance;
}

} // namespace

const wchar_t *MW_GetTranslation(const wchar_t *text, const char *context)
{
    if (!text) {
        qWarning("MW_GetTranslation: null text");
        return L"";
    }
    const QByteArray key = QString::fromWCharArray(text).toUtf8();
    const std::wstring translated
        = QCoreApplication::translate(context ? context : "", key.constData()).toStdWString();

    TranslationPool &p = pool();
    const std::lock_guard<std::mutex> lock(p.mutex);
    return p.texts.insert(translated).first->c_str();
}
