// Puts the results of a run into the tables of a page:  page RESULTS PAGE
// RESULTS has a name and a value in each line; of the values of one name the least counts, seconds and bytes. The page
// has a line "<!-- table NAME -->" before each table and a line "<!-- end -->" behind it.

#include "page_tables.h"

#include <QFile>
#include <QSaveFile>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString text_of(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("can't read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QString with_tables(const QString& page, const Results& results)
{
    const QString beginning = u"<!-- table "_s;
    const QString end = u"<!-- end -->"_s;
    QStringList lines;
    bool in_table = false;
    for (const QString& line : page.split(u'\n')) {
        in_table = in_table && line != end;
        if (!in_table)
            lines.append(line);
        if (!line.startsWith(beginning))
            continue;
        in_table = true;
        lines += table(line.mid(beginning.size()).section(u' ', 0, 0), results);
    }
    return lines.join(u'\n');
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    Results results;
    for (const QString& line : text_of(QFile::decodeName(argv[1])).split(u'\n', Qt::SkipEmptyParts))
        results.add(line.section(u'\t', 0, 0), line.section(u'\t', 1));
    const QString path = QFile::decodeName(argv[2]);
    const QString page = with_tables(text_of(path), results);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(page.toUtf8()) < 0 || !file.commit())
        qFatal("can't write %s", argv[2]);
    return 0;
}
