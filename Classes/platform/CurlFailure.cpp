#include "platform/CurlFailure.h"

#include <curl/curl.h>

#include <cerrno>

namespace veltramoor {

TransferFailureKind failureKind(int code, long osError) {
  switch (code) {
    case CURLE_URL_MALFORMAT:
      return TransferFailureKind::NoAddress;
    case CURLE_COULDNT_RESOLVE_HOST:
      return TransferFailureKind::NameNotFound;
    case CURLE_COULDNT_CONNECT:
      return osError == ECONNREFUSED ? TransferFailureKind::Refused
             : osError == ETIMEDOUT  ? TransferFailureKind::TimedOut
                                     : TransferFailureKind::Unreachable;
    case CURLE_OPERATION_TIMEDOUT:
      return TransferFailureKind::TimedOut;
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_SSL_ENGINE_NOTFOUND:
    case CURLE_SSL_ENGINE_SETFAILED:
    case CURLE_SSL_ENGINE_INITFAILED:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_SHUTDOWN_FAILED:
    case CURLE_SSL_CRL_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
    case CURLE_SSL_INVALIDCERTSTATUS:
    case CURLE_SSL_CLIENTCERT:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_USE_SSL_FAILED:
      return TransferFailureKind::Tls;
    case CURLE_PARTIAL_FILE:
    case CURLE_GOT_NOTHING:
    case CURLE_SEND_ERROR:
    case CURLE_SEND_FAIL_REWIND:
    case CURLE_RECV_ERROR:
      return TransferFailureKind::BrokenOff;
    case CURLE_FILESIZE_EXCEEDED:
    // A line of the head beyond libcurl's own limit; memory itself is never short as a rule.
    case CURLE_OUT_OF_MEMORY:
#if LIBCURL_VERSION_NUM >= 0x080600
    case CURLE_TOO_LARGE:
#endif
      return TransferFailureKind::TooLarge;
    // Only http and https are ever asked for, so the protocol is the answer's: HTTP/0.9, say.
    case CURLE_UNSUPPORTED_PROTOCOL:
    case CURLE_WEIRD_SERVER_REPLY:
      return TransferFailureKind::NotHttp;
    default:
      return TransferFailureKind::Other;
  }
}

}  // namespace veltramoor
