// SPDX-License-Identifier: Apache-2.0
// Reads an application's tree with libatspi, breadth-first and sequentially: role, name (or description if
// there is none) and children of each element. Arguments: process id, number of elements. Prints the number
// read and the time in ms.
//
// A separate process, so that nothing is cached between readings. Loads the library at run time to avoid a
// dependency on its headers.
#include <QElapsedTimer>
#include <QLibrary>
#include <QList>
#include <QString>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

struct Object;
struct Error;

template <typename Function>
Function *function(const char *name)
{
    static QLibrary library(u"atspi"_s, 0);
    const auto found = reinterpret_cast<Function *>(library.resolve(name));
    if (!found)
        std::exit(1);
    return found;
}

using Text = char *(Object *, Error **);
using Number = int(Object *, Error **);

class Library
{
public:
    Object *application(int process) const
    {
        m_init();
        Object *desktop = m_desktop(0);
        for (int i = 0; i < m_childCount(desktop, nullptr); ++i) {
            Object *candidate = m_child(desktop, i, nullptr);
            if (candidate && m_process(candidate, nullptr) == process)
                return candidate;
        }
        return nullptr;
    }

    qsizetype walk(Object *application, qsizetype most) const
    {
        QList<Object *> queue{application};
        qsizetype read = 0;
        for (; read < queue.size() && read < most; ++read)
            this->read(queue.at(read), queue);
        return read;
    }

private:
    void read(Object *object, QList<Object *> &queue) const
    {
        m_role(object, nullptr);
        const char *name = m_name(object, nullptr);
        if (!name || *name == 0)
            m_description(object, nullptr);
        const int children = m_childCount(object, nullptr);
        for (int i = 0; i < children; ++i) {
            if (Object *child = m_child(object, i, nullptr))
                queue.append(child);
        }
    }

    int (*m_init)() = function<int()>("atspi_init");
    Object *(*m_desktop)(int) = function<Object *(int)>("atspi_get_desktop");
    Number *m_process = function<Number>("atspi_accessible_get_process_id");
    Number *m_role = function<Number>("atspi_accessible_get_role");
    Text *m_name = function<Text>("atspi_accessible_get_name");
    Text *m_description = function<Text>("atspi_accessible_get_description");
    Number *m_childCount = function<Number>("atspi_accessible_get_child_count");
    Object *(*m_child)(Object *, int, Error **) =
        function<Object *(Object *, int, Error **)>("atspi_accessible_get_child_at_index");
};

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 3)
        return 64;
    const Library library;
    Object *application = library.application(std::atoi(argv[1]));
    if (!application)
        return 1;
    QElapsedTimer timer;
    timer.start();
    const qsizetype read = library.walk(application, std::atoll(argv[2]));
    std::printf("%lld %.3f\n", static_cast<long long>(read),
                static_cast<double>(timer.nsecsElapsed()) * 1e-6);
}
