#include "printerslib/drivers/transport.h"

#include "transport/devicetransport_p.h"
#include "transport/serialtransport_p.h"
#include "transport/tcptransport_p.h"

namespace printerslib::drivers {

Transport::Transport()
{
    qRegisterMetaType<TransportError>();
}

Transport::~Transport() = default;

std::unique_ptr<Transport> Transport::make(const PrinterAddress &address,
                                           const TransportOptions &options)
{
    switch (address.kind()) {
        case PrinterAddress::Kind::Serial:
            return std::make_unique<SerialTransport>(address, options);
        case PrinterAddress::Kind::Tcp:
            return std::make_unique<TcpTransport>(address, options);
        case PrinterAddress::Kind::File:
            return std::make_unique<FileTransport>(address, options);
        case PrinterAddress::Kind::None:
        case PrinterAddress::Kind::Device:
        case PrinterAddress::Kind::Usb:
            break;
    }
    return std::make_unique<DeviceTransport>(address, options);
}

}  // namespace printerslib::drivers
