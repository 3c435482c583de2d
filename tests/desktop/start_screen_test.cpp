#include "desktop/start_screen.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>

#include "session/session_state.h"

namespace orvantis {
namespace {

class StartScreenTest : public ::testing::Test {
  protected:
    void SetUp() override {
        session.SplashDone = kFalse;
        screen.show();
        QCoreApplication::processEvents();
    }

    StartScreen screen{QStringLiteral("Version 1.2.3")};
};

TEST_F(StartScreenTest, ItShowsTheNameAndTheVersion) {
    QStringList texts;
    for (const QLabel* label : screen.findChildren<QLabel*>()) texts += label->text();
    EXPECT_TRUE(texts.contains(QStringLiteral("Orvantis")));
    EXPECT_TRUE(texts.contains(QStringLiteral("Version 1.2.3")));
    EXPECT_EQ(session.SplashDone, 0);
}

TEST_F(StartScreenTest, AKeyEndsItAtOnce) {
    QTest::keyPress(&screen, Qt::Key_A);
    EXPECT_NE(session.SplashDone, 0);
}

TEST_F(StartScreenTest, AClickEndsItAtOnce) {
    QTest::mousePress(&screen, Qt::LeftButton, {}, QPoint(2, 2));
    EXPECT_NE(session.SplashDone, 0);
}

TEST_F(StartScreenTest, AClickOnItsPictureOrALabelEndsItAtOnce) {
    const QList<QLabel*> labels = screen.findChildren<QLabel*>();
    ASSERT_FALSE(labels.empty());
    for (const QLabel* label : labels) {
        session.SplashDone = kFalse;
        QTest::mousePress(screen.windowHandle(), Qt::LeftButton, {}, label->geometry().center());
        QCoreApplication::processEvents();
        EXPECT_NE(session.SplashDone, 0) << label->text().toStdString();
    }
}

TEST_F(StartScreenTest, ItsClosingEndsIt) {
    screen.close();
    EXPECT_NE(session.SplashDone, 0);
}

TEST_F(StartScreenTest, ItsTimeEndsIt) {
    EXPECT_TRUE(QTest::qWaitFor([] { return session.SplashDone != 0; }, 60'000));
}

}  // namespace
}  // namespace orvantis
