#include "tests/docs/MarkdownPage.h"
#include "tests/support/WaitFor.h"
#include "tests/system/ConsoleFixture.h"

#include <QProcess>
#include <QSslConfiguration>
#include <QStandardPaths>

namespace test {

namespace {

QString OnlyBlock(const char* kind) {
  const auto blocks = MarkdownPage(QStringLiteral("serving/README.md")).BlocksOf(QLatin1String(kind));
  EXPECT_EQ(blocks.size(), 1U) << kind;
  return blocks.empty() ? QString() : blocks.front();
}

void Replace(QString& text, const char* before, const QString& after) {
  EXPECT_TRUE(text.contains(QLatin1String(before))) << before;
  text.replace(QLatin1String(before), after);
}

QByteArray Content(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

// As Debian's own, in which sites are included.
constexpr const char* MainConfiguration = R"(
daemon off;
master_process off;
pid nginx.pid;
events { worker_connections 768; }
http {
  access_log access.log;
  client_body_temp_path temporary/body;
  proxy_temp_path temporary/proxy;
  fastcgi_temp_path temporary/fastcgi;
  uwsgi_temp_path temporary/uwsgi;
  scgi_temp_path temporary/scgi;
  include sites-enabled/*;
}
)";

// The console as serving/README.md installs it, below a folder in place of the machine's root, with ports that
// need no rights, and with 127.0.0.1 as the machine's name.
class ConsoleInProductionTest : public ConsoleFixture {
protected:
  ConsoleInProductionTest() : ConsoleFixture(Nginx(), 8443, true), root_(installation.Path("root")) {
    QDir root(root_);
    for (const char* folder : {"etc/systemd/system", "etc/nginx/sites-available", "etc/nginx/sites-enabled",
                               "etc/nginx/snippets", "temporary"}) {
      EXPECT_TRUE(root.mkpath(QLatin1String(folder)));
    }
    PlacePrograms();
    Install();
    Adapt(root.filePath("etc/nginx/sites-available/korvax-console"));
    Installation::Write(root.filePath("etc/nginx/nginx.conf"), MainConfiguration);
    Installation::Write(root.filePath("etc/nginx/korvax-console/passwords"),
                        "operator:" + Hash("a secret") + '\n');
    Trust(Content(root.filePath("etc/nginx/korvax-console/certificate.pem")));
  }

  void StartBoth() {
    Change(QStringLiteral("network"), Network());
    StartAndWaitUntilReady();
    StartWebServer(Arguments(), LoginField("a secret"));
  }

  // Of the site.
  void TakeOut(const char* line) const {
    const QString site = root_ + QStringLiteral("/etc/nginx/sites-available/korvax-console");
    QString text = QString::fromUtf8(Content(site));
    Replace(text, line, QString());
    Installation::Write(site, text.toUtf8());
  }

  QStringList Arguments() const {
    return {"-p", root_ + '/', "-e", root_ + "/error.log", "-c", root_ + "/etc/nginx/nginx.conf"};
  }

  static QByteArray Login(const QByteArray& password) { return "Basic " + ("operator:" + password).toBase64(); }
  static QByteArray LoginField(const QByteArray& password) { return "Authorization: " + Login(password) + "\r\n"; }

  const QString root_;
  static const QString Origin;

private:
  static QString Nginx() {
    const QString nginx =
        QStandardPaths::findExecutable("nginx", {"/usr/sbin", KORVAX_PROJECT_DIR "/.deps/nginx/usr/sbin"});
    EXPECT_FALSE(nginx.isEmpty()) << "nginx is missing: scripts/install-dependencies installs it";
    return nginx;
  }

  static QByteArray Run(const QString& program, const QStringList& arguments, const QString& folder) {
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(100'000)) << program.toStdString();
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput().trimmed();
  }

  QByteArray Hash(const char* password) const {
    return Run(QStringLiteral("openssl"), {"passwd", "-6", QLatin1String(password)}, root_);
  }

  // What the build makes.
  void PlacePrograms() {
    installation.AddBoardLibrary(KORVAX_SIMULATOR, QStringLiteral("libCAENDig2Sim.so"));
    QDir clone(installation.WorkingFolder());
    EXPECT_TRUE(clone.mkdir(QStringLiteral("build")));
    EXPECT_TRUE(QFile::link(installation.Path(QStringLiteral("bin")), clone.filePath("build/bin")));
    EXPECT_TRUE(QFile::link(KORVAXCTL, clone.filePath(QStringLiteral("build/bin/korvaxctl"))));
  }

  void Install() {
    QString commands;
    for (const QString& block : MarkdownPage("serving/README.md").BlocksOf("sh install")) {
      commands += block + QLatin1Char('\n');
    }
    Replace(commands, "name=lab.example", QStringLiteral("name=127.0.0.1"));
    Replace(commands, "sudo ", QString());
    for (const char* folder : {" /etc/", " /opt/", " /var/"}) {
      Replace(commands, folder, QLatin1Char(' ') + root_ + QLatin1String(folder).mid(1));
    }
    Run(QStringLiteral("bash"), {"-euxc", commands}, installation.WorkingFolder());
  }

  void Adapt(const QString& site) const {
    QString text = QString::fromUtf8(Content(site));
    Replace(text, "listen 80;", QStringLiteral("listen 127.0.0.1:8081;"));
    Replace(text, "  listen [::]:80;\n", QString());
    Replace(text, "listen 443 ", QStringLiteral("listen 127.0.0.1:8443 "));
    Replace(text, "  listen [::]:443 ssl so_keepalive=10m:1m:5;\n", QString());
    Replace(text, "root /var/", QStringLiteral("root %1/var/").arg(root_));
    Installation::Write(site, text.toUtf8());
  }

  static void Trust(const QByteArray& certificate) {
    QSslConfiguration trust = QSslConfiguration::defaultConfiguration();
    trust.setCaCertificates({QSslCertificate(certificate)});
    QSslConfiguration::setDefaultConfiguration(trust);
  }

  static QJsonObject Network() {
    QString section = OnlyBlock("json network");
    Replace(section, "lab.example", QStringLiteral("127.0.0.1"));
    return QJsonDocument::fromJson(section.toUtf8()).object();
  }
};

const QString ConsoleInProductionTest::Origin = QStringLiteral("https://127.0.0.1");

TEST_F(ConsoleInProductionTest, TheWebServerFindsNothingWrong) {
  webServer.Start(Arguments() << QStringLiteral("-t"));
  EXPECT_EQ(webServer.WaitForExit(), 0);
  const QString file = root_ + QStringLiteral("/etc/nginx/nginx.conf");
  EXPECT_EQ(webServer.ErrorLines(),
            (QStringList{QStringLiteral("nginx: the configuration file %1 syntax is ok").arg(file),
                         QStringLiteral("nginx: configuration file %1 test is successful").arg(file)}));
}

TEST_F(ConsoleInProductionTest, WithoutALoginNothingIsServed) {
  StartBoth();
  const QByteArray wrong = LoginField("guess");
  for (const WebAnswer& answer :
       {Get("/assets/page-1a2b.js"), Get("/other"), Get("/", wrong), Refusal("commands", Origin.toLatin1()),
        Refusal("commands", Origin.toLatin1(), wrong)}) {
    EXPECT_EQ(answer.status, 401) << answer.head.constData();
    EXPECT_EQ(answer.Field("WWW-Authenticate"), "Basic realm=\"Console of the data acquisition\"");
    EXPECT_FALSE(answer.body.contains("script"));
  }
  EXPECT_FALSE(Page(QStringLiteral("commands"), Origin)->Connect());
}

TEST_F(ConsoleInProductionTest, WithALoginThePageIsServedAndItsQueriesAreAnswered) {
  StartBoth();
  const WebAnswer answer = Get("/", LoginField("a secret"));
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(answer.body, PageText);
  EXPECT_EQ(answer.Field("Strict-Transport-Security"), "max-age=31536000");
  EXPECT_TRUE(answer.Field("Content-Security-Policy").startsWith("default-src 'none'; "));
  const auto page = Page(QStringLiteral("query_by_json"), Origin, Login("a secret"));
  ASSERT_TRUE(page->Connect());
  EXPECT_EQ(page->Ask(Query(SpectrumPath, R"({"cmd":"reset"})")), Success);
}

TEST_F(ConsoleInProductionTest, PagesOfOthersAreRefusedInSpiteOfTheLogin) {
  StartBoth();
  const QByteArray login = LoginField("a secret");
  EXPECT_EQ(Refusal("commands", "https://elsewhere.example", login).status, 403);
  EXPECT_EQ(Refusal("commands", "http://127.0.0.1", login).status, 403);
}

TEST_F(ConsoleInProductionTest, WithoutEncryptionThereIsOnlyTheWayToIt) {
  StartBoth();
  const auto answer = WebRequest{8081, "/socket/commands?a=b"}.Send();
  ASSERT_TRUE(answer.has_value());
  EXPECT_EQ(answer->status, 301);
  EXPECT_EQ(answer->Field("Location"), "https://127.0.0.1/socket/commands?a=b");
}

TEST_F(ConsoleInProductionTest, OneAddressHasAHundredConnectionsAtMost) {
  TakeOut("  limit_req zone=console_requests burst=50 nodelay;\n");  // which may come first
  StartBoth();
  std::vector<std::unique_ptr<TestClient>> pages;
  for (int i = 0; i < 100; ++i) {
    pages.push_back(Page(QStringLiteral("commands"), Origin, Login("a secret")));
    ASSERT_TRUE(pages.back()->Connect()) << i;
  }
  EXPECT_FALSE(Page(QStringLiteral("commands"), Origin, Login("a secret"))->Connect());
  EXPECT_TRUE(TestClient(QStringLiteral("commands")).Connect()) << "programs of the machine itself";
}

TEST_F(ConsoleInProductionTest, RequestsFasterThanThoseOfAPersonAreRefused) {
  StartBoth();
  int status = 200;
  for (int request = 0; request < 1'000 && status == 200; ++request) {
    status = Get("/", LoginField("a secret")).status;
  }
  EXPECT_EQ(status, 429);
}

TEST_F(ConsoleInProductionTest, TheServerItselfIsReachedFromTheMachineAlone) {
  StartBoth();
  EXPECT_TRUE(TestClient(QStringLiteral("commands"), QStringLiteral("127.0.0.1")).Connect());
  EXPECT_FALSE(TestClient(QStringLiteral("commands"), QStringLiteral("127.0.0.2")).Connect());
}

}  // namespace

}  // namespace test
