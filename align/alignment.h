#pragma once

#include <span>
#include <string>
#include <vector>

#include "align/registration.h"
#include "core/modcv.h"
#include "core/save_image.h"
#include "platform/desk.h"
#include "platform/platform.h"

namespace corvane {

// A slot and its mark in a picture of the slot's size.
struct MarkedSlot {
  int slot = 0;
  MarkedPicture picture;
};

// A slot whose picture is a crop that is neither saved nor undone. The former picture waits in the slot's
// hold file, and the slot still has its former data.
struct CroppedSlot {
  int slot = 0;
  FloatImage data;      // the crop of the slot's data; empty where they do not describe its picture
  std::string name;     // what the slot had before
  Rendering rendering;  // likewise
};

// Crops the picture and the data of every marked slot to what all of them show, so that their marks coincide;
// the slots' names get a "~". Empty, after a message, with everything as before, where one of them can't be
// cropped. Changes the working state.
std::vector<CroppedSlot> CropSlots(ModCV& cv, Platform& os, std::span<const MarkedSlot> marked);

// Brings a slot back to what it was before the crop. Where the hold file is lost, the picture is rendered
// again from the data; where that is impossible too, a message says so and the slot keeps its crop.
void UndoCrop(ModCV& cv, Platform& os, CroppedSlot cropped);
// Leaves the slot with the crop: its data become those that belong to its picture.
void KeepCrop(ModCV& cv, CroppedSlot cropped);
// Saves the picture that DisplayBits hold, that of the slot, or the cropped data: see SaveFits.
bool SaveCrop(ModCV& cv, Platform& os, Desk& desk, const CroppedSlot& cropped, const SaveTarget& target);

// Adds a slot "Mosaic..." that shows all marked pictures with their marks on one pixel, the later over the
// earlier ones; what none of them covers is black. It has data where all of them are 16-bit images. False
// after a message with everything as before; the working state changes.
bool AddMosaic(ModCV& cv, Platform& os, std::span<const MarkedSlot> marked);
// Takes the last slot away again.
void RemoveMosaic(ModCV& cv);
// Saves the mosaic, the last slot, whose picture DisplayBits hold. The header names the images it is made of.
bool SaveMosaic(ModCV& cv, Platform& os, Desk& desk, std::span<const MarkedSlot> marked,
                const SaveTarget& target);

}  // namespace corvane
