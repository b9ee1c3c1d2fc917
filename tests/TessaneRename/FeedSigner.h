// Signs update feeds for the tests with a key pair made by the test itself, into the envelope that
// the update check reads: {"feed": base64 of the bytes, "signature": base64 of their signature}.
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <sodium.h>

namespace tessane::testing {

class FeedSigner {
 public:
  FeedSigner()
      : publicKey_(crypto_sign_PUBLICKEYBYTES, '\0'), secretKey_(crypto_sign_SECRETKEYBYTES, '\0') {
    if (sodium_init() < 0) return;
    crypto_sign_keypair(bytes(publicKey_), bytes(secretKey_));
  }

  const QByteArray& publicKey() const { return publicKey_; }

  QByteArray signature(const QByteArray& feed) const {
    QByteArray out(crypto_sign_BYTES, '\0');
    crypto_sign_detached(bytes(out), nullptr,
                         reinterpret_cast<const unsigned char*>(feed.constData()),
                         static_cast<unsigned long long>(feed.size()),
                         reinterpret_cast<const unsigned char*>(secretKey_.constData()));
    return out;
  }

  // The envelope with `feed` and `signature` as they are given (a test may change either).
  static QByteArray envelope(const QByteArray& feed, const QByteArray& signature) {
    QJsonObject object{{"feed", QString::fromLatin1(feed.toBase64())}};
    if (!signature.isNull()) object.insert("signature", QString::fromLatin1(signature.toBase64()));
    return QJsonDocument(object).toJson();
  }

  QByteArray sign(const QByteArray& feed) const { return envelope(feed, signature(feed)); }

 private:
  static unsigned char* bytes(QByteArray& b) { return reinterpret_cast<unsigned char*>(b.data()); }

  QByteArray publicKey_, secretKey_;
};

}  // namespace tessane::testing
