#pragma once

#include <QString>

// A conversation log in pages, the last one first: however long the log is, a page is small. It is the log as
// it was when the reader opened it. A page begins and ends with a line, unless a line is longer than a page.
class LogPages
{
public:
    explicit LogPages(const QString& path);

    bool exists() const { return size_ >= 0; }
    bool hasEarlier() const { return begin_ > 0; }
    bool hasLater() const { return end_ < size_; }

    // The text of a page. `error` says why the log could not be read.
    QString last(QString* error);
    QString earlier(QString* error);
    QString later(QString* error);
    // From the first page on: `later` turns the pages until `hasLater` says no.
    void rewind() { begin_ = end_ = 0; }

private:
    QByteArray read(qint64 from, qint64 to, QString* error) const;

    const QString path_;
    qint64 size_ = -1; // of the file; the page at hand is [begin_, end_)
    qint64 begin_ = 0;
    qint64 end_ = 0;
};
