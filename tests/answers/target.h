#ifndef TARGET_H
#define TARGET_H

#include <QChar>
#include <QColor>
#include <QDateTime>
#include <QObject>
#include <QPixmap>
#include <QSize>
#include <QStringList>
#include <QUrl>
#include <QVariant>

/// Has a property of each type that widgets' properties commonly have.
class Target : public QObject
{
    Q_OBJECT
    Q_PROPERTY(int number MEMBER m_number)
    Q_PROPERTY(uint count MEMBER m_count)
    Q_PROPERTY(qlonglong big MEMBER m_big)
    Q_PROPERTY(double real MEMBER m_real)
    Q_PROPERTY(float small MEMBER m_small)
    Q_PROPERTY(bool flag MEMBER m_flag)
    Q_PROPERTY(bool visible MEMBER m_visible)
    Q_PROPERTY(QString text MEMBER m_text)
    Q_PROPERTY(QStringList texts MEMBER m_texts)
    Q_PROPERTY(QByteArray bytes MEMBER m_bytes)
    Q_PROPERTY(QChar letter MEMBER m_letter)
    Q_PROPERTY(QDate date MEMBER m_date)
    Q_PROPERTY(QTime time MEMBER m_time)
    Q_PROPERTY(QDateTime moment MEMBER m_moment)
    Q_PROPERTY(QUrl url MEMBER m_url)
    Q_PROPERTY(QSize size MEMBER m_size)
    Q_PROPERTY(QColor color MEMBER m_color)
    Q_PROPERTY(QPixmap pixmap READ GetPixmap WRITE SetPixmap)
    Q_PROPERTY(Qt::Orientation orientation MEMBER m_orientation)
    Q_PROPERTY(Qt::Alignment alignment MEMBER m_alignment)
    Q_PROPERTY(QVariant any READ GetAny WRITE SetAny)
    Q_PROPERTY(QVariantList list READ GetList WRITE SetList)
    Q_PROPERTY(QVariantMap map READ GetMap WRITE SetMap)

public:
    QPixmap GetPixmap() const { return m_pixmap; }
    QVariant GetAny() const { return m_any; }
    void SetAny(const QVariant& any) { m_any = any; }
    QVariantList GetList() const { return m_list; }
    void SetList(const QVariantList& list) { m_list = list; }
    QVariantMap GetMap() const { return m_map; }
    void SetMap(const QVariantMap& map) { m_map = map; }
    void SetPixmap(const QPixmap& pixmap) { m_pixmap = pixmap; }

private:
    int m_number = 0;
    uint m_count = 0;
    qlonglong m_big = 0;
    double m_real = 0.0;
    float m_small = 0.0F;
    bool m_flag = false;
    bool m_visible = false;
    QString m_text;
    QStringList m_texts;
    QByteArray m_bytes;
    QChar m_letter;
    QDate m_date;
    QTime m_time;
    QDateTime m_moment;
    QUrl m_url;
    QSize m_size;
    QColor m_color;
    QPixmap m_pixmap;
    Qt::Orientation m_orientation = Qt::Horizontal;
    Qt::Alignment m_alignment;
    QVariant m_any;
    QVariantList m_list;
    QVariantMap m_map;
};

#endif
