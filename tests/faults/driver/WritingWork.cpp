// "picture-png" and its like: a picture put in the place of an older one; "settings": the host's preferences.

#include "CFaultRecorder.h"
#include "CFaultWork.h"

#include "COrmImageExporter.h"
#include "COrmPreference.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace
{
QByteArray bytesOf(const QString& strFile)
{
    QFile objFile(strFile);
    return objFile.open(QIODevice::ReadOnly) ? objFile.readAll() : QByteArray();
}

/// The file is the old one or the new one, whole, and nothing lies beside it.
QString wrongFile(const QTemporaryDir& objFolder, const QString& strFile, const QByteArray& baOld, QByteArray& baNew, bool bNew,
                  bool bSound)
{
    const QStringList lstFiles = QDir(objFolder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    if (lstFiles.size() != 1)
        return QStringLiteral("besides the file there is: ") + lstFiles.join(' ');
    const QByteArray baNow = bytesOf(strFile);
    if (bSound)
        baNew = baNow;
    if (baNow == (bNew ? baNew : baOld))
        return QString();
    return bNew ? QStringLiteral("it passes for written and is not") : QStringLiteral("the old file has changed");
}

class CPictureWork : public CFaultWork
{
public:
    explicit CPictureWork(const QString& strFormat)
        : m_strFile(m_objFolder.filePath("picture." + strFormat)), m_imgPicture(320, 200, QImage::Format_RGB32)
    {
        for (int y = 0; y < m_imgPicture.height(); ++y)
        {
            for (int x = 0; x < m_imgPicture.width(); ++x)
                m_imgPicture.setPixel(x, y, qRgb(x % 256, y, (x * y) % 256));
        }
    }

    QByteArray folder() const override { return m_objFolder.path().toLocal8Bit(); }
    /// What a picture takes. The small things that Qt's writers keep for themselves are out of reach: an exception that goes through
    /// QtGui leaves its locks closed.
    std::size_t leastBytes() const override { return 4096; }
    bool isRefused() const override { return !m_bSaved; }
    void prepare() override
    {
        for (const QString& strLeft : QDir(m_objFolder.path()).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(m_objFolder.filePath(strLeft));
        QFile objFile(m_strFile);
        objFile.open(QIODevice::WriteOnly);
        objFile.write(m_baOld);
        m_objRecorder.clear();
        m_bSaved = false;
    }
    void run() override
    {
        COrmImageExporter objExporter;
        m_bSaved = objExporter.saveImage(m_imgPicture, m_strPath);
    }
    QString wrongOutcome(const OrmFaults::SPlan& sPlan, const OrmFaults::SRun& sRun) override
    {
        const QString strWrong = wrongFile(m_objFolder, m_strFile, m_baOld, m_baNew, m_bSaved, sRun.nHit == 0);
        if (!strWrong.isEmpty())
            return strWrong;
        const int nBoxes = m_objRecorder.boxes().size();
        const bool bMayBeMute = sPlan.bForEver && sPlan.eKind == OrmFaults::EKind::Memory;
        if (m_bSaved ? nBoxes == 0 : nBoxes == 1 || (bMayBeMute && nBoxes == 0))
            return QString();
        return QStringLiteral("%1 boxes").arg(nBoxes);
    }

private:
    QTemporaryDir m_objFolder;
    const QString m_strFile;
    QString m_strPath = m_strFile; ///< for the exporter, which may change what it is given
    QImage m_imgPicture;
    CFaultRecorder m_objRecorder;
    const QByteArray m_baOld = QByteArray(1000, 'o');
    QByteArray m_baNew;
    bool m_bSaved = false;
};

/// Writes as one must not: into the old file, and without a look at what became of it. A check of the checks.
class CCarelessWork : public CFaultWork
{
public:
    QByteArray folder() const override { return m_objFolder.path().toLocal8Bit(); }
    bool isRefused() const override { return false; }
    void prepare() override {}
    void run() override
    {
        QFile objFile(m_strFile);
        objFile.open(QIODevice::WriteOnly);
        objFile.write(QByteArray(1000, 'n'));
    }
    QString wrongOutcome(const OrmFaults::SPlan&, const OrmFaults::SRun& sRun) override
    {
        return wrongFile(m_objFolder, m_strFile, QByteArray(), m_baNew, true, sRun.nHit == 0);
    }

private:
    QTemporaryDir m_objFolder;
    const QString m_strFile = m_objFolder.filePath(QStringLiteral("careless"));
    QByteArray m_baNew;
};

class CSettingsWork : public CFaultWork
{
public:
    QByteArray folder() const override { return m_objFolder.path().toLocal8Bit(); }
    bool isRefused() const override { return m_bRefused; }
    void prepare() override
    {
        for (const QString& strLeft : QDir(m_objFolder.path()).entryList(QDir::Files | QDir::Hidden))
            QFile::remove(m_objFolder.filePath(strLeft));
        COrmPreference::setStore(m_strFile);
        COrmPreference::setUsersPreferredFormat(QStringLiteral(".png"));
        m_baOld = bytesOf(m_strFile);
        m_objRecorder.clear();
    }
    void run() override
    {
        try
        {
            COrmPreference::setUsersPreferredFormat(QStringLiteral(".tif"));
        }
        catch (const std::bad_alloc&) // the host's event loop is guarded
        {
            m_bThrown = true;
        }
    }
    QString wrongOutcome(const OrmFaults::SPlan&, const OrmFaults::SRun& sRun) override
    {
        COrmPreference::setStore(QString());
        m_bRefused = bytesOf(m_strFile) == m_baOld;
        const bool bSaid = m_bThrown || !m_objRecorder.reasons().isEmpty();
        m_bThrown = false;
        const QString strWrong = wrongFile(m_objFolder, m_strFile, m_baOld, m_baNew, !m_bRefused, sRun.nHit == 0);
        if (!strWrong.isEmpty())
            return strWrong;
        return m_bRefused && !bSaid ? QStringLiteral("nobody said that nothing was written") : QString();
    }

private:
    QTemporaryDir m_objFolder;
    const QString m_strFile = m_objFolder.filePath(QStringLiteral("preferences.json"));
    CFaultRecorder m_objRecorder;
    QByteArray m_baOld;
    QByteArray m_baNew;
    bool m_bThrown = false;
    bool m_bRefused = false;
};
} // namespace

std::unique_ptr<CFaultWork> writingWork(const QString& strName)
{
    if (strName == QLatin1String("settings"))
        return std::make_unique<CSettingsWork>();
    if (strName == QLatin1String("careless"))
        return std::make_unique<CCarelessWork>();
    if (strName.startsWith(QLatin1String("picture-")))
        return std::make_unique<CPictureWork>(strName.mid(8));
    return nullptr;
}
