#include "VirtualDataLink/IDataLinkLayer.h"

#include "VirtualDataLink/Layer.h"

namespace VirtualDataLink {

IDataLinkLayer* IDataLinkLayer::GetDefault() {
    return Layer::GetDefault().release();
}

}  // namespace VirtualDataLink
