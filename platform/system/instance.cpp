#include "system/instance.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

#include "system/unique_fd.h"

namespace phone {

namespace {

/// Longest key of a window: two texts of 255 UTF-16 code units in UTF-8, and the tab.
constexpr std::size_t kLongestRequest = 2 * 255 * 3 + 1;

std::string claimed_name;
UniqueFd claimed_socket;

struct Address {
  sockaddr_un address = {};
  socklen_t size = 0;
};

/// FNV-1a, 64 bits: names of any length fit the address.
std::uint64_t HashOf(std::string_view text) {
  std::uint64_t hash = 14695981039346656037u;
  for (const char unit : text) hash = (hash ^ static_cast<unsigned char>(unit)) * 1099511628211u;
  return hash;
}

/// The address begins with a zero byte: it has no file, and goes with its socket.
Address AddressOf(std::string_view name) {
  const std::string text = "phone/" + std::to_string(getuid()) + '/' + std::to_string(HashOf(name));
  Address result;
  result.address.sun_family = AF_UNIX;
  text.copy(result.address.sun_path + 1, sizeof result.address.sun_path - 1);
  result.size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + text.size());
  return result;
}

UniqueFd MakeSocket() {
  return UniqueFd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

const sockaddr* Generic(const Address& address) {
  return reinterpret_cast<const sockaddr*>(&address.address);
}

/// True when the sender is a process of this user. The kernel fills in who it is.
bool IsFromThisUser(msghdr& message) {
  for (cmsghdr* part = CMSG_FIRSTHDR(&message); part; part = CMSG_NXTHDR(&message, part)) {
    if (part->cmsg_level != SOL_SOCKET || part->cmsg_type != SCM_CREDENTIALS) continue;
    ucred sender;
    std::memcpy(&sender, CMSG_DATA(part), sizeof sender);
    return sender.uid == getuid();
  }
  return false;
}

}  // namespace

bool ClaimInstance(const std::string& name) {
  ReleaseInstance();
  claimed_name = name;
  UniqueFd made = MakeSocket();
  const Address address = AddressOf(name);
  const int on = 1;
  if (!made || setsockopt(made.get(), SOL_SOCKET, SO_PASSCRED, &on, sizeof on) != 0 ||
      bind(made.get(), Generic(address), address.size) != 0)
    return false;
  claimed_socket = std::move(made);
  return true;
}

void ReleaseInstance() {
  claimed_socket = UniqueFd();
  claimed_name.clear();
}

bool InstanceClaimed() {
  return static_cast<bool>(claimed_socket);
}

bool OtherInstanceRuns() {
  if (InstanceClaimed() || claimed_name.empty()) return false;
  const UniqueFd probe = MakeSocket();
  const Address address = AddressOf(claimed_name);
  return probe && connect(probe.get(), Generic(address), address.size) == 0;
}

bool RaiseOtherInstance(std::string_view window) {
  if (InstanceClaimed() || claimed_name.empty() || window.size() > kLongestRequest) return false;
  const UniqueFd sender = MakeSocket();
  const Address address = AddressOf(claimed_name);
  if (sendto(sender.get(), window.data(), window.size(), MSG_NOSIGNAL, Generic(address), address.size) >= 0)
    return true;
  // A full queue is an instance that has been asked often enough already.
  return errno == EAGAIN || errno == ENOBUFS;
}

std::vector<std::string> TakeRaiseRequests() {
  std::vector<std::string> requests;
  std::array<char, kLongestRequest> text;
  alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(ucred))> control;
  while (InstanceClaimed()) {
    iovec part = {text.data(), text.size()};
    msghdr message = {};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    message.msg_control = control.data();
    message.msg_controllen = control.size();
    const ssize_t size = recvmsg(claimed_socket.get(), &message, MSG_CMSG_CLOEXEC);
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) break;
    if (IsFromThisUser(message)) requests.emplace_back(text.data(), static_cast<std::size_t>(size));
  }
  return requests;
}

int RaiseDescriptor() {
  return claimed_socket.get();
}

}  // namespace phone
