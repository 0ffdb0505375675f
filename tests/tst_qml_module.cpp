#include "support/log_recorder.h"

#include <zenvor/zenvor.h>

#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTemporaryFile>
#include <QTest>

using namespace zenvor;
using namespace Qt::StringLiterals;
using test::LogRecorder;

class TestQmlModule : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void offersTheOperationsToEachEngine();
};

// An expression of QML, as a host has it; the program itself names nothing of the library for it.
void TestQmlModule::offersTheOperationsToEachEngine()
{
    const QByteArray source(
        "import QtQml\n"
        "import Zenvor\n"
        "QtObject {\n"
        "    function run(file, image) {\n"
        "        const video = new Uint8Array([1, 2, 3]).buffer\n"
        "        Zenvor.configure('token', false)\n"
        "        Zenvor.present()\n"
        "        Zenvor.stop()\n"
        "        const results = [\n"
        "            Zenvor.setPendingAttachmentData(video, 'video/mp4'),\n"
        "            Zenvor.addPendingAttachmentData(video, 'video/nothing'),\n"
        "            Zenvor.setPendingAttachmentData(undefined, 'video/mp4'),\n"
        "            Zenvor.setPendingAttachmentData(null, 'video/mp4'),\n"
        "            Zenvor.setPendingAttachmentData(1, 'video/mp4'),\n"
        "            Zenvor.addPendingAttachmentData('text', 'video/mp4'),\n"
        "            Zenvor.addPendingAttachmentData(new Uint8Array([1]), 'video/mp4'),\n"
        "            Zenvor.addPendingAttachment(image, 0.72),\n"
        "            Zenvor.setPendingAttachmentFile('file:///nowhere.png'),\n"
        "            Zenvor.addPendingAttachmentFile('file:///nowhere.png', 'video/mp4'),\n"
        "            Zenvor.setPendingAttachmentFiles([file, 'file:///b.png'])\n"
        "        ]\n"
        "        Zenvor.clearPendingAttachments()\n"
        "        return results.join(' ')\n"
        "    }\n"
        "}\n");
    QTemporaryFile file(QDir::tempPath() + u"/XXXXXX.mp4"_s);
    QVERIFY(file.open() && file.write("video") > 0 && file.flush());
    LogRecorder log;
    QQmlEngine first;
    QQmlEngine second;
    for (auto *engine : {&first, &second, &first}) {
        QQmlComponent component(engine);
        component.setData(source, {});
        const std::unique_ptr<QObject> object(component.create());
        QVERIFY2(object, qPrintable(component.errorString()));
        QVariant results;
        QVERIFY(QMetaObject::invokeMethod(object.get(), "run", Q_RETURN_ARG(QVariant, results),
                                          Q_ARG(QVariant, QUrl::fromLocalFile(file.fileName())),
                                          Q_ARG(QVariant, QImage(4, 4, QImage::Format_RGB32))));
        QCOMPARE(results.toString(), u"true false true true false false false true false false 1"_s);
        QCOMPARE(log.take().size(), 4); // configured, stopped, present requested, stopped
    }
}

QTEST_MAIN(TestQmlModule)
#include "tst_qml_module.moc"
