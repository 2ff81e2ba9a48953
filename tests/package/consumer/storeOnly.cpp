// A program that frames bytes, and knows no data model.
#include "Vok/Vok.h"
#include "store/Framing.h"

int main()
{
   const auto header = Vok::Store::FrameWriter().header( 0 );
   std::span< const std::byte > piece = header;
   Vok::Store::FrameReader reader;
   return reader.feed( piece ) ? 0 : 1;
}
