#include "platform/ui/qt/SingleInstance.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDeadlineTimer>
#include <QVariantMap>
#include <algorithm>
#include <chrono>
#include <utility>

#include "platform/ui/qt/FileAddress.h"

namespace vintrace::qt {
namespace {

constexpr const char* Interface = "org.freedesktop.Application";
constexpr const char* BusName = VINTRACE_BUS_NAME;

/// How long a start waits, and how much earlier the running instance begins to refuse its request:
/// time for the answer, so that they agree on who opens the documents.
constexpr std::chrono::milliseconds Patience(2000);
constexpr std::chrono::milliseconds TimeForAnswer(500);

// The keys of the platform data.
constexpr const char* TokenKey = "activation-token";
constexpr const char* StartupKey = "desktop-startup-id";
/// Not a standard key: when to refuse the request, in milliseconds of the monotonic clock.
constexpr const char* DeadlineKey = "vintrace-deadline";

/// The object path that the interface prescribes for a bus name.
QString ObjectPath() {
  return '/' + QString::fromLatin1(BusName).replace('.', '/').replace('-', '_');
}

QVariantMap PlatformData(const Activation& activation, const QDeadlineTimer& deadline) {
  QVariantMap data{{DeadlineKey, deadline.deadline() - qint64{TimeForAnswer.count()}}};
  if (!activation.token.empty()) {
    data.insert(TokenKey, QString::fromStdString(activation.token));
  }
  if (!activation.startupId.empty()) {
    data.insert(StartupKey, QString::fromStdString(activation.startupId));
  }
  return data;
}

QVariantMap PlatformDataIn(const QDBusMessage& call) {
  return qdbus_cast<QVariantMap>(call.arguments().last());
}

/// True if the caller is about to open its documents itself.
bool ComesTooLate(const QDBusMessage& call) {
  const QVariant deadline = PlatformDataIn(call).value(DeadlineKey);
  return deadline.isValid() && deadline.toLongLong() <= QDeadlineTimer::current().deadline();
}

QDBusMessage CallOf(const StartRequest& request, const QDeadlineTimer& deadline) {
  const auto call = [](const char* method) {
    return QDBusMessage::createMethodCall(BusName, ObjectPath(), Interface, method);
  };
  const QVariantMap platformData = PlatformData(request.activation, deadline);
  if (request.documents.empty()) return call("Activate") << platformData;
  QStringList uris;
  for (const auto& document : request.documents) uris << QString(AddressOf(document));
  return call("Open") << uris << platformData;
}

/// A text of the platform data; empty if it is missing or longer than any desktop's.
String ShortText(const QVariant& value) {
  constexpr std::size_t Longest = 1024;
  String text = value.toString().toStdString();
  return text.size() > Longest ? String() : text;
}

StartRequest RequestIn(const QDBusMessage& call) {
  StartRequest request;
  const QVariantMap platformData = PlatformDataIn(call);
  request.activation = {.token = ShortText(platformData.value(TokenKey)),
                        .startupId = ShortText(platformData.value(StartupKey))};
  if (call.member() != "Open") return request;
  for (const QString& uri : call.arguments().first().toStringList()) {
    if (auto file = FileAt(uri.toUtf8())) request.documents.push_back(std::move(*file));
  }
  return request;
}

/// False if a path would name another file in a process with another working directory.
bool CanTravel(const StartRequest& request) {
  return std::ranges::all_of(request.documents, [](const FolderItem& document) {
    return document.NativePath().starts_with('/');
  });
}

}  // namespace

class SingleInstance::Bus : public QDBusVirtualObject {
 public:
  explicit Bus(QDBusConnection bus) : bus_(std::move(bus)) {
    // Before the name is requested, so that a process that sees the name finds the object.
    bus_.registerVirtualObject(ObjectPath(), this);
  }

  /// Requests the name without queueing (D-Bus, "Message Bus Messages"). True if this
  /// process owns it now.
  bool RequestName(const QDeadlineTimer& deadline) const {
    constexpr uint DoNotQueue = 4;
    constexpr uint PrimaryOwner = 1;
    constexpr uint AlreadyOwner = 4;
    const auto call = CallOfBus("RequestName") << BusName << DoNotQueue;
    const auto answer = bus_.call(call, QDBus::Block, static_cast<int>(deadline.remainingTime()));
    if (answer.type() != QDBusMessage::ReplyMessage) return false;
    const uint state = answer.arguments().value(0).toUInt();
    return state == PrimaryOwner || state == AlreadyOwner;
  }

  bool IsTaken(const QDBusMessage& call, const QDeadlineTimer& deadline) const {
    const auto answer = bus_.call(call, QDBus::Block, static_cast<int>(deadline.remainingTime()));
    return answer.type() == QDBusMessage::ReplyMessage;
  }

  void Serve(std::function<void(const StartRequest&)> taken) { taken_ = std::move(taken); }

  void Release() {
    taken_ = nullptr;
    bus_.call(CallOfBus("ReleaseName") << BusName, QDBus::Block,
              static_cast<int>(Patience.count()));
  }

  bool handleMessage(const QDBusMessage& call, const QDBusConnection& bus) override {
    if (call.interface() != Interface || !taken_) return false;
    const QString method = call.member() + ' ' + call.signature();
    const bool brings = method == "Open asa{sv}" || method == "Activate a{sv}";
    if (!brings && method != "ActivateAction sava{sv}") return false;
    if (brings && ComesTooLate(call)) return false;
    bus.send(call.createReply());
    if (brings) taken_(RequestIn(call));
    return true;
  }

  QString introspect(const QString& /*path*/) const override {
    return QStringLiteral(
        "<interface name='org.freedesktop.Application'>"
        "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
        "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/>"
        "</method>"
        "<method name='ActivateAction'><arg type='s' direction='in'/>"
        "<arg type='av' direction='in'/><arg type='a{sv}' direction='in'/></method>"
        "</interface>");
  }

 private:
  static QDBusMessage CallOfBus(const char* method) {
    constexpr const char* Bus = "org.freedesktop.DBus";
    return QDBusMessage::createMethodCall(Bus, "/org/freedesktop/DBus", Bus, method);
  }

  QDBusConnection bus_;
  std::function<void(const StartRequest&)> taken_;
};

SingleInstance::SingleInstance() {
  auto bus = QDBusConnection::sessionBus();
  if (bus.isConnected()) bus_ = std::make_unique<Bus>(std::move(bus));
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::HandOver(const StartRequest& request) {
  if (!bus_) return false;
  // The owner of the name may quit after the first request.
  constexpr int Attempts = 2;
  const QDeadlineTimer deadline(Patience);
  for (int attempt = 0; attempt < Attempts && !deadline.hasExpired(); ++attempt) {
    if (bus_->RequestName(deadline) || !CanTravel(request)) return false;
    if (bus_->IsTaken(CallOf(request, deadline), deadline)) return true;
  }
  return false;
}

void SingleInstance::Serve(std::function<void(const StartRequest&)> taken) {
  if (bus_) bus_->Serve(std::move(taken));
}

void SingleInstance::Release() {
  if (bus_) bus_->Release();
}

}  // namespace vintrace::qt
