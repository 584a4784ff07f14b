#include "helpviewer/viewer_window.hpp"

#include <gtest/gtest.h>

#include <QDir>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocalSocket>
#include <QLockFile>
#include <QRegularExpression>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <filesystem>
#include <future>

#include "helpviewer/help_book.hpp"
#include "helpviewer/help_page.hpp"
#include "helpviewer/single_viewer.hpp"

namespace quintara {

TEST(HelpBook, LeavesTheFilesFolderAloneAndSaysWhatIsWrongWithAFileThatIsNoHelpFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath("Helpfile.hlp");
  ASSERT_TRUE(QFile::copy(HELP_FILE, path));
  EXPECT_EQ(HelpBook().open(path), "");
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"Helpfile.hlp"});
  for (const int kept : {90'000, 100, 0}) {
    ASSERT_TRUE(QFile::resize(path, kept));
    EXPECT_TRUE(HelpBook().open(path).contains("not a help file")) << kept;
  }
  EXPECT_TRUE(HelpBook().open(folder.filePath("nowhere")).contains("was not found"));
}

struct Viewer : testing::Test {
  void SetUp() override {
    ASSERT_EQ(book.open(HELP_FILE), "");
    window = std::make_unique<ViewerWindow>(book);
    window->show();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows() > 0 && window->isActiveWindow(); }));
  }

  int rows() { return book.engine().indexModel()->rowCount(); }
  QLineEdit* filter() { return qobject_cast<QLineEdit*>(window->focusWidget()); }
  HelpPage& page() { return *static_cast<HelpPage*>(window->findChild<QTextBrowser*>()); }
  /// Whether the link leads to a page or picture of the book, and to an anchor that it has.
  bool reaches(const QUrl& link) {
    const QByteArray target = book.engine().fileData(link.adjusted(QUrl::RemoveFragment));
    const QByteArray anchor = "name=\"" + link.fragment().toUtf8() + '"';
    return !target.isEmpty() && (!link.hasFragment() || target.contains(anchor));
  }

  HelpBook book;
  std::unique_ptr<ViewerWindow> window;
};

TEST_F(Viewer, HasAPageForEveryLinkPictureAndKeyword) {
  const QRegularExpression reference("(?:href|src)=\"([^\"]+)\"");
  const auto pages = book.engine().files("quintara.help", QString(), "html");
  ASSERT_GE(pages.size(), 10);
  for (const QUrl& page : pages) {
    auto match = reference.globalMatch(QString::fromUtf8(book.engine().fileData(page)));
    for (const auto& found : match) {
      const QUrl link = page.resolved(found.captured(1));
      EXPECT_TRUE(reaches(link)) << link.toString().toStdString();
    }
  }
  for (const QString& keyword : book.engine().indexModel()->stringList()) {
    const auto found = book.engine().documentsForKeyword(keyword);
    EXPECT_TRUE(found.size() == 1 && reaches(found[0].url)) << keyword.toStdString();
  }
}

TEST_F(Viewer, OpensAtTheIndexWithNothingTypedAndIsLeftByTheKeyboard) {
  EXPECT_EQ(window->findChild<QTabWidget*>()->currentIndex(), 0);
  ASSERT_NE(filter(), nullptr);
  EXPECT_EQ(filter()->text(), "");
  const int all = rows();
  QTest::keyClicks(filter(), "tab order");
  EXPECT_EQ(rows(), 1);
  QTest::keyClick(filter(), Qt::Key_Return);
  EXPECT_EQ(page().source().fileName(), "keyboard.html");
  window->findChild<QTabWidget*>()->setCurrentIndex(1);
  window->comeForward();
  ASSERT_NE(filter(), nullptr);
  EXPECT_EQ(rows(), all) << "asked for again: nothing typed";
  EXPECT_EQ(page().source().fileName(), "keyboard.html");
  filter()->setText("tab order");
  QTest::keyClick(window.get(), Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(page().source().fileName(), "index.html");
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_EQ(rows(), all);
  EXPECT_TRUE(window->isVisible());
  QTest::keyClick(window.get(), Qt::Key_Escape);
  EXPECT_FALSE(window->isVisible());
}

TEST_F(Viewer, FollowsLinksWithinTheBookOnly) {
  const QUrl home = page().source();
  for (const char* outside : {"http://localhost/", "file:///etc/hostname"})
    emit page().anchorClicked(QUrl(outside));
  EXPECT_EQ(page().source(), home);
  emit page().anchorClicked(QUrl("chart.html#axes"));
  EXPECT_EQ(page().source().fileName(), "chart.html");
  page().setSource(home.resolved(QUrl("lost.html")));
  EXPECT_TRUE(page().toPlainText().contains("lost.html is missing"));
}

TEST_F(Viewer, FindsTextRoundTheEndsOfThePage) {
  for (int time = 0; time < 2; ++time)  // it stands there once
    EXPECT_TRUE(page().findText("readout", false));
  EXPECT_TRUE(page().findText("Internet", true));
  EXPECT_FALSE(page().findText("no such words", false));
}

// Its socket's name, which nobody else needs to know.
std::filesystem::path socketOf(const QTemporaryDir& folder, const QString& file) {
  SingleViewer viewer(folder.path(), file);
  EXPECT_FALSE(viewer.handOver());
  return std::filesystem::directory_iterator(folder.path().toStdString())->path();
}

TEST_F(Viewer, FindsAnyWordOnAnyPageAndSaysWhenThereIsNone) {
  auto* found = window->findChild<QListWidget*>();
  const auto typed = [&](const char* words) {
    window->comeForward();
    filter()->setText(words);
    QTest::keyClick(filter(), Qt::Key_Return);
    QTest::qWait(1);
  };
  typed("target");
  EXPECT_TRUE(page().toPlainText().contains("Target = C + (B"));
  // Words that are no keywords: the whole, the beginning, two of them.
  for (const char* words : {"guesses", "guess", "steep! fall", "\"GUESSES"}) {
    typed(words);
    ASSERT_TRUE(QTest::qWaitFor([&] { return found->count() > 0; })) << words;
    QTest::keyClick(found, Qt::Key_Return);
    EXPECT_EQ(page().source().fileName(), "targets.html") << words;
    found->clear();
  }
  typed("qwxyz");
  const auto says = [&] {
    for (const QLabel* label : window->findChildren<QLabel*>())
      if (label->isVisible() && label->text() == "Nothing was found for \"qwxyz\".") return true;
    return false;
  };
  EXPECT_TRUE(QTest::qWaitFor(says));
  EXPECT_EQ(found->count(), 0);
}

TEST_F(Viewer, ShowsLinksThatCanBeReadOnEveryGround) {
  const auto brightness = [&] {
    QTextCursor at = page().document()->find("Your first chart");
    return qGray(at.charFormat().foreground().color().rgb());
  };
  for (const auto& [ground, link] : {std::pair{"#202020", "#0000ff"},
                                     {"#202020", "#303030"},
                                     {"#ffffff", "#ffff00"},
                                     {"#ffffff", "#0000ff"}}) {
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Link, link);
    page().setPalette(palette);
    EXPECT_GT(std::abs(brightness() - qGray(QColor(ground).rgb())), 90) << ground << link;
  }
}

TEST(SingleViewer, OpensAWindowInTimeWhateverIsInItsWay) {
  const QString file = "/a/Helpfile.hlp";
  EXPECT_FALSE(SingleViewer("", file).handOver());
  for (const std::string hindrance : {"silent", "dribbling", "locked"}) {
    const QTemporaryDir folder;
    const QString socket = QString::fromStdString(socketOf(folder, file));
    QLocalServer other;
    ASSERT_TRUE(other.listen(socket));
    QLockFile lock(socket + ".lock");
    ASSERT_TRUE(hindrance != "locked" || lock.tryLock());
    auto viewer = std::async(std::launch::async, [&] {
      return SingleViewer(folder.path(), file, std::chrono::milliseconds(300)).handOver();
    });
    auto caller = other.waitForNewConnection(100) ? other.nextPendingConnection() : nullptr;
    auto state = std::future_status::timeout;
    for (int bytes = 0; bytes < 100 && state != std::future_status::ready; ++bytes) {
      if (caller && hindrance == "dribbling") {
        caller->write("h");
        caller->flush();
      }
      state = viewer.wait_for(std::chrono::milliseconds(50));
    }
    EXPECT_EQ(state, std::future_status::ready) << hindrance;
    EXPECT_FALSE(viewer.get()) << hindrance;
  }
}

TEST(SingleViewer, ALaterLaunchForTheSameFileRingsTheFirstAlsoOverASocketLeftByACrash) {
  const QTemporaryDir folder;
  const QString file = "/a/Helpfile.hlp";
  std::filesystem::path socket;
  {
    SingleViewer crashing(folder.path(), file);
    ASSERT_FALSE(crashing.handOver());
    for (const auto& entry : std::filesystem::directory_iterator(folder.path().toStdString()))
      socket = entry.path();
    // A second name outlives the tidying up that a crash would have left undone.
    std::filesystem::create_hard_link(socket, socket.string() + "-kept");
  }
  std::filesystem::rename(socket.string() + "-kept", socket);
  SingleViewer first(folder.path(), file);
  EXPECT_FALSE(first.handOver());
  int rings = 0;
  first.onRing([&] { ++rings; });
  // A later launch is another process; here it is another thread, while this one runs its events.
  for (int launch = 1; launch <= 2; ++launch) {
    auto later = std::async(std::launch::async,
                            [&] { return SingleViewer(folder.path(), file).handOver(); });
    while (later.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready)
      QCoreApplication::processEvents();
    EXPECT_TRUE(later.get());
    EXPECT_FALSE(SingleViewer(folder.path(), "/b/Helpfile.hlp").handOver());
  }
  EXPECT_EQ(rings, 2);
}

}  // namespace quintara

int main(int argc, char** argv) {
  const QApplication app(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
