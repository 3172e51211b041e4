// SPDX-License-Identifier: Apache-2.0
// The windows in sway's replies, and what is no reply of sway.
#include "Desktop/Linux/Wayland/SwayTree.h"
#include "Support/Awaited.h"

#include <QCoreApplication>
#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class SwayTreeTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void windowsOfAllLevelsAreFound();
    void whatIsNoTreeIsNoReply_data();
    void whatIsNoTreeIsNoReply();
    void onlyTheCompositorIsBelieved();
};

void SwayTreeTest::windowsOfAllLevelsAreFound()
{
    const auto windows = SwayTree::windowsIn(R"({"nodes": [{"name": "screen", "nodes": [
        {"pid": 7, "app_id": "editor", "name": "A\nletter", "focused": true},
        {"pid": 8, "app_id": null, "window_properties": {"class": "Clock"}, "name": "Noon", "focused": false}],
        "floating_nodes": [{"nodes": [{"pid": 9, "app_id": "dialog", "name": null, "focused": false}]}]}]})");
    QVERIFY(windows);
    QCOMPARE(windows->size(), 3);
    QCOMPARE(windows->at(0).process, 7);
    QCOMPARE(windows->at(0).applicationIdentifier, u"editor"_s);
    QCOMPARE(windows->at(0).title, u"A letter"_s);
    QVERIFY(windows->at(0).isFocused);
    QCOMPARE(windows->at(1).applicationIdentifier, u"Clock"_s);
    QVERIFY(!windows->at(1).isFocused);
    QCOMPARE(windows->at(2).process, 9);
    QCOMPARE(windows->at(2).title, QString());
}

void SwayTreeTest::whatIsNoTreeIsNoReply_data()
{
    QTest::addColumn<QByteArray>("reply");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("cut") << "{\"nodes\": ["_ba;
    QTest::newRow("a list") << "[]"_ba;
}

void SwayTreeTest::whatIsNoTreeIsNoReply()
{
    QFETCH(QByteArray, reply);
    QVERIFY(!SwayTree::windowsIn(reply));
}

// A socket of this process, as if it were left over from another compositor.
void SwayTreeTest::onlyTheCompositorIsBelieved()
{
    QTemporaryDir folder;
    QLocalServer server;
    QVERIFY(server.listen(folder.filePath(u"sway.sock"_s)));
    QObject::connect(&server, &QLocalServer::newConnection, &server, [&server] {
        const QByteArray tree = R"({"pid": 5, "app_id": "editor", "name": "Letter"})";
        const auto length = static_cast<std::uint32_t>(tree.size());
        const std::uint32_t type = 4;
        QByteArray reply = "i3-ipc";
        for (const std::uint32_t number : {length, type})
            reply.append(reinterpret_cast<const char *>(&number), sizeof number);
        server.nextPendingConnection()->write(reply + tree);
    });
    qputenv("SWAYSOCK", server.fullServerName().toUtf8());
    QVERIFY(!Awaited::result(SwayTree::windows(1)));
    const auto windows = Awaited::result(SwayTree::windows(QCoreApplication::applicationPid()));
    QVERIFY(windows);
    QCOMPARE(windows->size(), 1);
}

QTEST_GUILESS_MAIN(SwayTreeTest)
#include "SwayTreeTest.moc"
