#include "platform/ui/qt/SingleInstance.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
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

// The keys of the platform data.
constexpr const char* TokenKey = "activation-token";
constexpr const char* StartupKey = "desktop-startup-id";
/// Not a standard key: when the caller stops waiting, in milliseconds of the monotonic clock.
constexpr const char* DeadlineKey = "vintrace-deadline";

/// The object path that the interface prescribes for a bus name.
QString ObjectPath() {
  return '/' + QString::fromLatin1(BusName).replace('.', '/').replace('-', '_');
}

QVariantMap PlatformData(const Activation& activation, const QDeadlineTimer& deadline) {
  QVariantMap data{{DeadlineKey, deadline.deadline()}};
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

/// True if the caller has stopped waiting, and opens its documents itself.
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

StartRequest RequestIn(const QDBusMessage& call) {
  StartRequest request;
  const QVariantMap platformData = PlatformDataIn(call);
  request.activation = {.token = platformData.value(TokenKey).toString().toStdString(),
                        .startupId = platformData.value(StartupKey).toString().toStdString()};
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

  bool RequestName() {
    return bus_.interface()
               ->registerService(BusName, QDBusConnectionInterface::DontQueueService)
               .value() == QDBusConnectionInterface::ServiceRegistered;
  }

  bool IsTaken(const QDBusMessage& call, const QDeadlineTimer& deadline) const {
    const auto answer = bus_.call(call, QDBus::Block, static_cast<int>(deadline.remainingTime()));
    return answer.type() == QDBusMessage::ReplyMessage;
  }

  void Serve(std::function<void(const StartRequest&)> taken) { taken_ = std::move(taken); }

  void Release() {
    taken_ = nullptr;
    bus_.unregisterService(BusName);
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
  QDBusConnection bus_;
  std::function<void(const StartRequest&)> taken_;
};

SingleInstance::SingleInstance() {
  auto bus = QDBusConnection::sessionBus();
  if (bus.isConnected()) bus_ = std::make_unique<Bus>(std::move(bus));
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::HandOver(const StartRequest& request) {
  if (!bus_ || !CanTravel(request)) return false;
  // The owner of the name may quit after the first request.
  constexpr int Attempts = 2;
  const QDeadlineTimer deadline(std::chrono::seconds(2));
  for (int attempt = 0; attempt < Attempts && !deadline.hasExpired(); ++attempt) {
    if (bus_->RequestName()) return false;
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
