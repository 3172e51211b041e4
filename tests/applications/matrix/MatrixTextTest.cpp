// SPDX-License-Identifier: Apache-2.0
// Text and keys.
#include "applications/matrix/MatrixKeys.h"
#include "applications/matrix/MatrixTest.h"
#include "applications/support/HardText.h"

#include <QDir>

using namespace Qt::StringLiterals;

void MatrixTest::takesText()
{
    const auto cell = begin(MatrixAction::TypeText);
    QVERIFY(start());
    if (m_application.kind == Kind::FileManager)
        verifyNewFolder(u"Été à Łódź, Съешь ещё, 👍🏽 👩🏿‍🚀 漢字"_s);
    else if (m_application.limits.contains(MatrixAction::TypeText))
        verifyLimitedText();
    else
        verifyText(HardText::ofRound(0));
}

// Nothing is typed of a text with an emoji, all of others.
void MatrixTest::verifyLimitedText()
{
    const Outcome refused = perform("type_text", {{"text", u"party 🎉"_s}});
    QCOMPARE(refused.line,
             u"“%1” may not take the character “🎉”, so nothing was typed."_s.arg(m_application.name));
    QVERIFY(refused.hasFailed);
    QString text = HardText::ofRound(0);
    text.removeIf([](QChar unit) { return unit.isSurrogate(); });
    verifyText(text);
}

void MatrixTest::verifyText(const QString &text)
{
    if (m_application.kind == Kind::Terminal)
        QVERIFY(!perform("type_text", {{"text", u"cat > %1\n"_s.arg(m_document)}}).hasFailed);
    else
        QVERIFY(press(u"a"_s, u"command"_s)); // select all
    const Outcome outcome = perform("type_text", {{"text", text}});
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
    verifyWritten(text);
}

// In a file manager, types the name of a new folder.
void MatrixTest::verifyNewFolder(const QString &name)
{
    Screen::pressKey(u"ctrl+shift+n"_s);
    QVERIFY(QTest::qWaitFor([this] { return windowCount() == 2; }, PrivateDesktop::patience));
    QVERIFY(press(u"a"_s, u"command"_s));
    const Outcome outcome = perform("type_text", {{"text", name}});
    QVERIFY2(!outcome.hasFailed, qPrintable(outcome.line));
    QVERIFY(press(u"return"_s));
    VERIFY_EFFECT(QDir(PrivateDesktop::home(u"Downloads/"_s + name)).exists(), outcome);
}

void MatrixTest::verifyWritten(const QString &expected)
{
    if (m_application.kind == Kind::Editor)
        QVERIFY(press(u"S"_s, u"command"_s));
    if (m_application.kind == Kind::Terminal)
        QVERIFY(press(u"Return"_s) && press(u"d"_s, u"control"_s));
    QString written;
    QVERIFY2(QTest::qWaitFor([&] { return isWritten(expected, written); }, PrivateDesktop::patience),
             qPrintable(HardText::difference(expected, written)));
}

bool MatrixTest::isWritten(const QString &expected, QString &written) const
{
    const bool isPage = m_application.kind == Kind::Browser;
    written = isPage ? m_site->report() : QString::fromUtf8(PrivateDesktop::read(m_document));
    // Editors may append a line break when saving.
    return written == expected || (!isPage && written == expected + u'\n');
}

void MatrixTest::takesKeys()
{
    const auto cell = begin(MatrixAction::PressKey);
    const bool tellsKeys =
        m_application.kind == Kind::Browser || m_application.windowClass == "orvane_desktop_sample"_L1;
    if (tellsKeys)
        return verifyEveryKey();
    QVERIFY(start());
    if (m_application.kind == Kind::FileManager)
        verifyKeysInFolder();
    else
        verifyKeysInDocument();
}

bool MatrixTest::press(const QString &key, const QString &modifiers)
{
    const Outcome outcome = perform("press_key", {{"key", key}, {"modifiers", modifiers}});
    if (outcome.hasFailed)
        qWarning("%s with “%s”: %s", qPrintable(key), qPrintable(modifiers), qPrintable(outcome.line));
    return !outcome.hasFailed;
}

bool MatrixTest::pressTypingKeys(const QString &modifiers)
{
    for (const MatrixKey &key : MatrixKeys::all()) {
        if (!key.text.isEmpty() && !press(key.name, modifiers))
            return false;
    }
    return true;
}

void MatrixTest::verifyKeysInDocument()
{
    QString plain;
    QString shifted;
    for (const MatrixKey &key : MatrixKeys::all()) {
        plain += key.text;
        shifted += key.shiftedText;
    }
    if (m_application.kind == Kind::Terminal)
        QVERIFY(!perform("type_text", {{"text", u"cat > %1\n"_s.arg(m_document)}}).hasFailed);
    else
        QVERIFY(press(u"a"_s, u"command"_s)); // select all
    QVERIFY(pressTypingKeys({}) && press(u"return"_s) && pressTypingKeys(u"shift"_s) && press(u"enter"_s));
    QVERIFY(press(u"x"_s) && press(u"y"_s) && press(u"backspace"_s) && press(u"z"_s) && press(u"delete"_s));
    if (m_application.kind == Kind::Terminal)
        return verifyWritten(plain + u'\n' + shifted + u"\nx"_s);

    // From the end of “x”: moves left and right, replaces the last word, and moves up and down a line.
    QVERIFY(press(u"left"_s) && press(u"w"_s) && press(u"right"_s) && press(u"tab"_s) && press(u"y"_s));
    QVERIFY(press(u"left"_s, u"command+shift"_s) && press(u"v"_s));
    QVERIFY(press(u"up"_s) && press(u"down"_s) && press(u"escape"_s) && press(u"esc"_s));
    verifyWritten(plain + u'\n' + shifted + u"\nwx\tv"_s);
}

void MatrixTest::verifyKeysInFolder()
{
    QVERIFY(press(u"up"_s, u"option"_s));
    QVERIFY(QTest::qWaitFor([this] { return showsTitle(u"home"_s); }, PrivateDesktop::patience));
    QVERIFY(press(u"left"_s, u"option"_s));
    QVERIFY(QTest::qWaitFor([this] { return showsTitle(u"Downloads"_s); }, PrivateDesktop::patience));
    QVERIFY(press(u"n"_s, u"command"_s));
    QVERIFY(QTest::qWaitFor([this] { return windowCount() == 2; }, PrivateDesktop::patience));
}

// All keys, with every modifier and pair of modifiers, except combinations grabbed or handled elsewhere.
void MatrixTest::verifyEveryKey()
{
    const bool isPage = m_application.kind == Kind::Browser;
    PrivateDesktop::write(m_document, "");
    QVERIFY(isPage ? startWith({m_site->address(u"/keys"_s)}, u"Keys page"_s)
                   : startWith({u"--keys"_s, m_document}, u"Sample"_s));
    if (isPage)
        QVERIFY(takesKeysInPage());
    const QList<MatrixKey> keys = MatrixKeys::all();
    QCOMPARE(keys.size(), 58);
    QStringList expected;
    for (const QString &modifiers : MatrixKeys::modifiers()) {
        for (const MatrixKey &key : keys) {
            const QString name = MatrixKeys::pageName(key, modifiers);
            if (m_application.keysTaken.contains(name) || MatrixKeys::takenByTheDesktop().contains(name))
                continue;
            QVERIFY(press(key.name, modifiers));
            expected << (isPage ? name : MatrixKeys::symbolName(key, modifiers));
        }
        const QString all = expected.join(u'\n');
        QVERIFY2(QTest::qWaitFor([&] { return keysReported() == all; }, PrivateDesktop::patience),
                 qPrintable(modifiers + u": "_s + HardText::difference(all, keysReported())));
    }
}

QString MatrixTest::keysReported() const
{
    return m_application.kind == Kind::Browser
               ? m_site->report()
               : QString::fromUtf8(PrivateDesktop::read(m_document)).trimmed();
}
